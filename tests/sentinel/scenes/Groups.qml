import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    Open { x: 10; y: 370 }
    Item {
        id: empty
        x: 70; y: 30
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
        Rectangle { width: 60; height: 30; color: "#ff00ff" }
        Rectangle { x: -30; y: 50; width: 60; height: 30; color: "#ff00ff" }
    }
    Item {
        x: 200; y: 200; width: -90; height: -70
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
        Rectangle { anchors.fill: parent; color: "#ff00ff" }
        Rectangle { x: -40; y: -40; width: 30; height: 30; color: "#ff00ff" }
    }
    Item {
        x: 30; y: 260; height: 50
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
        Repeater { model: 4; Item { x: index * 50; SecretText { text: index; Merovanta.tag: 0 } } }
    }
    QtObject {}

    function drive(step) { empty.x = 70 + step * 11 % 60 }
}
