import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    Open { x: 10; y: 10 }
    Secret { parent: stage.Overlay.overlay; x: 60; y: 60; z: 3 }
    Item {
        x: 200; y: 300
        Secret { id: far; x: -150; y: -90 }
        Item { x: 20; y: 30; Item { x: -90; y: 20; SecretText { id: deep } } }
    }
    Button { x: 10; y: 350; text: "Pay"; icon.color: "transparent"; Secret { anchors { left: parent.right; top: parent.top } } }

    function drive(step) { far.y = -90 - step * 7 % 60; deep.x = step % 5 * 9 }
}
