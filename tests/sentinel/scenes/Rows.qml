import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    property int next: 6

    ListView {
        anchors { fill: parent; margins: 15 }
        model: ListModel { id: rows }
        delegate: Item {
            width: 270
            height: 48
            Open { y: 10; width: 30 }
            Secret { x: 40; y: 6; height: 36; width: 200 }
        }
        add: Transition { NumberAnimation { properties: "x"; from: -250; duration: 250 } NumberAnimation { property: "scale"; from: 0.3; to: 1; duration: 250 } }
        remove: Transition { NumberAnimation { property: "x"; to: 250; duration: 250 } NumberAnimation { property: "opacity"; to: 0.3; duration: 250 } }
        displaced: Transition { NumberAnimation { properties: "x,y"; duration: 250; easing.type: Easing.OutBounce } }
        move: displaced
        Component.onCompleted: { for (let row = 0; row < 6; ++row) rows.append({ row: row }) }
    }

    function drive(step) {
        switch (step % 4) {
        case 0: rows.insert(1, { row: next++ }); break
        case 1: rows.move(0, 4, 1); break
        case 2: rows.remove(2, 1); break
        }
    }
}
