import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Item {
        x: 100; y: 60; width: 150; height: 120
        rotation: 33
        scale: 1.3
        transformOrigin: Item.TopLeft
        Secret { id: inner; x: 20; y: 30; rotation: -70; transformOrigin: Item.BottomRight }
        Open { x: 50; y: 90; width: 20 }
    }
    Rectangle {
        id: dial
        x: 60; y: 250; width: 120; height: 120; radius: 60; color: "whitesmoke"
        Secret { x: 50; y: 5; width: 20; height: 60; antialiasing: true }
        RotationAnimation on rotation { from: 0; to: 360; duration: 700; loops: Animation.Infinite }
    }
    SecretText {
        x: 210; y: 330
        transform: [ Scale { xScale: 0.5; yScale: 2.2 }, Rotation { angle: -25; origin.x: 10 }, Translate { x: 8; y: -5 } ]
    }

    Item {
        x: 20; width: 200; height: 60
        transform: Scale { id: flip; xScale: -1; origin.x: 100 }
        LayoutMirroring.enabled: true
        LayoutMirroring.childrenInherit: true
        Row { anchors.fill: parent; Open {} Secret {} }
    }
    SecretText { x: 200; y: 250; transform: Matrix4x4 { matrix: Qt.matrix4x4(1, 0.6, 0, 10, -0.4, -1, 0, 20, 0, 0, 1, 0, 0, 0, 0, 1) } }

    function drive(step) { inner.rotation += 13; inner.scale = 0.6 + step % 5 * 0.2; flip.xScale = -1 - step % 4 * 0.2 }
}
