import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Flow {
        id: flow
        width: 220
        spacing: 5
        Open { id: filler }
        Repeater { model: 6; Secret { width: 60 } }
        move: Transition { NumberAnimation { properties: "x,y"; duration: 200 } }
        add: Transition { NumberAnimation { property: "scale"; from: 0; to: 1; duration: 200 } }
    }
    Secret {
        y: 200
        SequentialAnimation on x {
            loops: Animation.Infinite
            SpringAnimation { to: 190; spring: 2; damping: 0.1; duration: 300 }
            NumberAnimation { to: -40; duration: 180; easing.type: Easing.InOutElastic }
        }
    }
    Secret {
        id: springy
        x: 30; y: 300
        Behavior on x { NumberAnimation { duration: 120 } }
        Behavior on width { SmoothedAnimation { velocity: 400 } }
        Behavior on opacity { NumberAnimation { duration: 120 } }
    }

    function drive(step) {
        flow.width = 120 + step % 4 * 50
        filler.visible = step % 3 != 1
        springy.x = step % 2 ? 10 : 150
        springy.width = 50 + step % 3 * 40
        springy.opacity = step % 3 ? 1 : 0.5
    }
}
