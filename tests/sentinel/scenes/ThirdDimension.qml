import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Open { x: 230; y: 370 }
    Item {
        id: card
        x: 60; y: 40; width: 160; height: 120
        transform: Rotation { id: turn; origin { x: 80; y: 60 } axis { x: 0.3; y: 1; z: 0 } angle: 40 }
        Secret { x: 20; y: 20; transform: Rotation { axis { x: 1; y: 0; z: 0 } angle: turn.angle * 0.7; origin.y: 40 } }
    }
    Item {
        x: 90; y: 230; width: 120; height: 90
        transform: Matrix4x4 { matrix: Qt.matrix4x4(1, 0, 0.7, 0, 0, 1, 0.5, 0, -0.7, 0.2, 1, 0, 0, 0, 0, 1) }
        Secret {
            x: 20; y: 25
            transform: Matrix4x4 { matrix: Qt.matrix4x4(1, 0, 0, 0, 0, 1, 0, 0, 0.8, 0.6, 1, 0, 0, 0, 0, 1) }
        }
    }
    Flipable {
        id: flip
        x: 20; y: 330; width: 110; height: 60
        front: Secret { x: 5; y: 5 }
        back: SecretText { font.pixelSize: 12 }
        transform: Rotation { id: side; origin.x: 55; axis { x: 0; y: 1; z: 0 } }
    }

    function drive(step) { turn.angle = step * 17 % 80; side.angle = step * 31 % 360 }
}
