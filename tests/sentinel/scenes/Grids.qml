import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "parts"

Stage {
    GridLayout {
        id: grid
        anchors { fill: parent; margins: 17 }
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

    function drive(step) { grid.columns = 1 + step % 4 }
}
