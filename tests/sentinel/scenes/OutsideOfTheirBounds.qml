import QtQuick
import QtQuick.Controls
import QtQuick.Shapes
import Merovanta
import "parts"

Stage {
    Open { x: 10; y: 370 }
    Shape {
        x: 80; y: 40; width: 30; height: 30
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
        ShapePath { strokeWidth: 12; strokeColor: "#ff00ff"; fillColor: "#ff00ff"; startX: -50; startY: 20; PathLine { x: 120; y: -20 } PathLine { x: 60; y: 80 } }
    }
    Image {
        id: picture
        x: 60; y: 160; width: 60; height: 20
        fillMode: Image.PreserveAspectCrop
        source: "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4z/AfAAQAAf8iCjrwAAAAAElFTkSuQmCC"
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
    }
    Canvas {
        x: 50; y: 250; width: 40; height: 30
        canvasSize: Qt.size(160, 90)
        canvasWindow: Qt.rect(0, 0, 160, 90)
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
        onPaint: { const context = getContext("2d"); context.fillStyle = "#ff00ff"; context.fillRect(0, 0, 160, 90) }
    }
    Rectangle {
        x: 200; y: 200; width: 10; height: 10
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
        Rectangle { x: -40; y: -30; width: 100; height: 20; color: "#ff00ff"; Rectangle { y: 60; width: 50; height: 50; rotation: 45; color: "#ff00ff" } }
    }

    function drive(step) { picture.height = 10 + step % 4 * 5 }
}
