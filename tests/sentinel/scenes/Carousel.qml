import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    PathView {
        id: carousel
        anchors.fill: parent
        model: 7
        pathItemCount: 5
        delegate: Rectangle {
            width: 120
            height: 80
            color: "lavender"
            scale: PathView.size ?? 1
            z: PathView.size ?? 1
            rotation: (PathView.size ?? 1) * 30
            Secret { anchors.centerIn: parent }
            Open { y: 2; x: 2; height: 10 }
        }
        path: Path {
            startX: 150; startY: 280
            PathAttribute { name: "size"; value: 1.3 }
            PathQuad { x: 150; y: 80; controlX: 340; controlY: 180 }
            PathAttribute { name: "size"; value: 0.4 }
            PathQuad { x: 150; y: 280; controlX: -40; controlY: 180 }
        }
    }

    function drive(step) { if (step % 4 == 0) carousel.incrementCurrentIndex(); else carousel.offset += 0.13 }
}
