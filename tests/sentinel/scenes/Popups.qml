import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    Open { x: 10; y: 10 }
    Popup {
        id: plain
        x: 60; y: 50; width: 180; height: 90
        Secret { x: 14; y: 9 }
        enter: Transition { NumberAnimation { property: "scale"; from: 0.4; to: 1; duration: 150 } NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 150 } }
        exit: Transition { NumberAnimation { property: "y"; to: 300; duration: 150 } }
    }
    Popup {
        id: whole
        x: 90; y: 220; width: 160; height: 100; modal: true; dim: false
        background: Rectangle { color: "#ff00ff" }
        Merovanta.tag: 7
        Merovanta.masked: naming.mark
    }
    Button {
        id: button
        x: 20; y: 340; text: "Hint"
        ToolTip { id: hint; visible: false; contentItem: SecretText { font.pixelSize: 14 } }
    }

    function drive(step) {
        step % 4 == 0 ? plain.open() : step % 4 == 2 ? plain.close() : null
        whole.visible = step % 3 != 2
        hint.visible = step % 2 == 0
        whole.x = 90 - step % 5 * 11
    }
}
