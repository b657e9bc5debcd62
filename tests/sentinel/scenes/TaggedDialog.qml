import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    Open { x: 10; y: 10 }
    Dialog {
        id: dialog
        title: "Secret"
        width: 200
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
        background: Rectangle { color: "#ff00ff"; border { color: "#ff00ff"; width: 3 } }
        header: Rectangle { implicitHeight: 30; color: "#ff00ff" }
        footer: Rectangle { implicitHeight: 30; color: "#ff00ff" }
        Rectangle { y: 90; x: 150; width: 100; height: 30; color: "#ff00ff" }
    }

    function drive(step) { dialog.visible = step % 4 != 3; dialog.x = step * 19 % 90; dialog.y = 60 + step % 5 * 20 }
}
