import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Item {
        x: 20; y: 30; width: 200; height: 80
        LayoutMirroring.enabled: true
        LayoutMirroring.childrenInherit: true
        Row { anchors.fill: parent; Open {} Secret {} }
    }
    Item {
        x: 20; y: 140; width: 200; height: 80
        transform: Scale { id: flip; xScale: -1; origin.x: 100 }
        Secret { x: 10; y: 10 }
        Open { x: 130; y: 10 }
    }
    SecretText { x: 60; y: 300; transform: Matrix4x4 { matrix: Qt.matrix4x4(1, 0.6, 0, 10, -0.4, -1, 0, 20, 0, 0, 1, 0, 0, 0, 0, 1) } }

    function drive(step) { flip.xScale = -1 - step % 4 * 0.2 }
}
