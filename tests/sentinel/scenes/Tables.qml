import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    TableView {
        id: table
        anchors { fill: parent; margins: 21 }
        columnSpacing: 3
        rowSpacing: 3
        reuseItems: true
        model: 400
        delegate: Rectangle {
            implicitWidth: 90
            implicitHeight: 40
            color: "lightyellow"
            Secret { x: 4; y: 4; width: 60; height: 28; visible: row % 2 == 0 }
            Open { x: 4; y: 4; visible: row % 2 == 1 }
        }
    }

    function drive(step) { table.contentY = step * 53 % 4000 }
}
