import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
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
            GridLayout {
                id: grid
                SplitView.fillHeight: true
                columns: 2
                Repeater {
                    model: 9
                    Rectangle {
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                        color: "lightyellow"
                        border.color: "navy"
                        Secret { anchors { fill: parent; margins: 9 } visible: index % 2 == 0 }
                        Open { anchors.centerIn: parent; width: 10; height: 10; visible: index % 2 == 1 }
                    }
                }
            }
        }
    }

    function drive(step) {
        grid.columns = 1 + step % 4
        left.SplitView.preferredWidth = 60 + step * 29 % 180
        upper.SplitView.preferredHeight = 80 + step * 41 % 200
    }
}
