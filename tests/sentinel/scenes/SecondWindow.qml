import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    id: stage
    Open { x: 10; y: 10 }
    Secret { x: 40; y: 60 }
    ApplicationWindow {
        id: second
        width: 260; height: 300
        transientParent: stage
        color: "white"
        Open { x: 10; y: 10 }
        Secret { id: moved; x: 50; y: 80 }
        SecretText { anchors { right: parent.right; bottom: parent.bottom } }
    }

    function drive(step) {
        if (step % 6 == 1) second.show()
        if (step % 6 == 5) second.hide()
        moved.x = 50 + step * 13 % 90
    }
}
