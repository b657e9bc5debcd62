import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    GridView {
        id: grid
        anchors.fill: parent
        cellWidth: 97
        cellHeight: 71
        model: ListModel { id: cells }
        delegate: Rectangle {
            width: 92
            height: 66
            radius: 12
            color: "aliceblue"
            Secret { anchors { fill: parent; margins: 10 } radius: 8; visible: index % 3 != 2 }
            Open { anchors.centerIn: parent; visible: index % 3 == 2 }
        }
        populate: Transition { NumberAnimation { properties: "x,y"; from: 150; duration: 200 } }
        add: Transition { NumberAnimation { property: "rotation"; from: 180; to: 0; duration: 250 } }
        remove: Transition { NumberAnimation { property: "scale"; to: 2; duration: 250 } }
        displaced: Transition { NumberAnimation { properties: "x,y"; duration: 250 } }
        Component.onCompleted: { for (let cell = 0; cell < 14; ++cell) cells.append({ cell: cell }) }
    }

    function drive(step) {
        if (step % 4 == 0) cells.insert(2, { cell: 1 })
        else if (step % 4 == 2) cells.remove(4, 1)
    }
}
