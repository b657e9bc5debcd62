import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    property real shift: 0
    Open { x: 230; y: 10 }
    Repeater {
        model: 12
        Secret {
            x: 10.1 + index * 7.37 + stage.shift
            y: 10.3 + index * 31.7
            width: 101.3
            height: 20.4
            antialiasing: index % 2
            scale: 1 + index * 0.01
            border { width: 1; color: "#ff00ff" }
        }
    }

    function drive(step) { shift = step * 0.37 % 40 }
}
