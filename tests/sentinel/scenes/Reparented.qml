import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    Rectangle { id: here; x: 10; y: 10; width: 130; height: 150; color: "lightyellow"; Open { y: 120 } }
    Rectangle { id: there; x: 160; y: 220; width: 130; height: 150; color: "aliceblue"; scale: 0.8; rotation: 10 }
    Secret {
        id: mover
        parent: here
        x: 10; y: 20
        states: State { name: "there"; ParentChange { target: mover; parent: there; x: 15; y: 70; rotation: 90 } }
        transitions: Transition { ParentAnimation { NumberAnimation { properties: "x,y,rotation,scale"; duration: 200 } } }
    }

    function drive(step) { if (step % 4 == 0) mover.state = mover.state ? "" : "there" }
}
