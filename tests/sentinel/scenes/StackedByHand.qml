import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    StackView {
        id: stack
        anchors.fill: parent
        initialItem: page
        pushEnter: Transition { NumberAnimation { property: "x"; from: 300; to: 0; duration: 300 } NumberAnimation { property: "rotation"; from: 20; to: 0; duration: 300 } }
        pushExit: Transition { NumberAnimation { property: "scale"; from: 1; to: 0.6; duration: 300 } }
        popEnter: Transition { NumberAnimation { property: "scale"; from: 0.6; to: 1; duration: 300 } }
        popExit: Transition { NumberAnimation { property: "y"; from: 0; to: 400; duration: 300 } }
        Component {
            id: page
            Page {
                Open { x: 200; y: 10 }
                Secret { x: 30; y: 90; width: 160; height: 60 }
            }
        }
    }

    function drive(step) {
        if (step % 5 != 0) return
        if (stack.depth > 2) stack.pop(); else stack.push(page)
    }
}
