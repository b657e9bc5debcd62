import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    SplitView {
        anchors.fill: parent
        orientation: Qt.Horizontal
        Pane { id: left; SplitView.preferredWidth: 120; SplitView.minimumWidth: 20; Secret { x: 4; y: 60 } Open {} }
        SplitView {
            SplitView.fillWidth: true
            orientation: Qt.Vertical
            Pane { id: upper; SplitView.preferredHeight: 150; SecretText { anchors.centerIn: parent } }
            Item { SplitView.fillHeight: true; Secret { anchors { bottom: parent.bottom; right: parent.right; margins: 14 } } }
        }
    }

    function drive(step) {
        left.SplitView.preferredWidth = 60 + step * 29 % 180
        upper.SplitView.preferredHeight = 80 + step * 41 % 200
    }
}
