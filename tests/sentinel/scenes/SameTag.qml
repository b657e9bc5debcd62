import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    Secret { x: 500; y: 10 }
    Secret { x: 20; y: 20; opacity: 0 }
    Secret { width: 0; height: 0 }
    Secret { id: flickering; x: 40; y: 80 }
    Secret { id: below; x: 40; y: 150; z: -1 }
    Item { z: -2; Secret { x: 100; y: 260; z: 5 } }
    Rectangle { y: 200; width: 300; height: 200; color: "white"; opacity: 0.4 }
    Open { x: 20; y: 320 }
    Secret { parent: stage.Overlay.overlay; x: 60; y: 60; z: 3 }
    Item {
        x: 200; y: 300
        Secret { id: far; x: -150; y: -90 }
        Item { x: 20; y: 30; Item { x: -90; y: 20; SecretText { id: deep } } }
    }
    Button { x: 10; y: 350; text: "Pay"; Secret { anchors { left: parent.right; top: parent.top } } }

    function drive(step) {
        flickering.visible = step % 2 == 0
        below.y = 150 + step * 11 % 60
        far.y = -90 - step * 7 % 60
        deep.x = step % 5 * 9
    }
}
