import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    StackView {
        id: stack
        anchors.fill: parent
        initialItem: page
        Component {
            id: page
            Page {
                header: Open {}
                Secret { x: 40; y: 70 + 60 * (parent.StackView.index ?? 0); width: 150 }
                SecretText { anchors { right: parent.right; bottom: parent.bottom; margins: 20 } }
            }
        }
    }

    function drive(step) {
        if (stack.busy) return
        if (stack.depth > 2) stack.pop()
        else stack.push(page)
    }
}
