import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "parts"

Stage {
    id: stage
    ColumnLayout {
        anchors { fill: parent; margins: 10 }
        Open {}
        Secret { Layout.fillWidth: true; Layout.fillHeight: true; Layout.margins: 12 }
        RowLayout { Item { Layout.fillWidth: true } SecretText {} }
    }
    Secret { anchors { right: parent.right; verticalCenter: parent.verticalCenter } width: parent.width * 0.4 }

    function drive(step) { width = 220 + step * 37 % 130; height = 300 + step * 23 % 140 }
}
