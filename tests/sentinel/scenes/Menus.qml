import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    Open { x: 200; y: 360 }
    Menu {
        id: menu
        MenuItem { text: "Plain" }
        MenuItem { contentItem: SecretText { font.pixelSize: 14; text: "Account 12" } }
        Secret { height: 22 }
        Menu { id: more; title: "More"; Secret { height: 25 } }
    }
    ComboBox {
        id: box
        x: 40; y: 250; width: 200
        model: ["Account 1", "Account 2", "Account 3"]
        contentItem: SecretText { text: box.displayText }
        delegate: ItemDelegate {
            width: box.width
            contentItem: Text { text: modelData; font.pixelSize: 16 }
            background: Secret {}
        }
    }

    function drive(step) {
        if (step % 4 == 0) { box.popup.close(); menu.popup(30 + step % 50, 40) }
        if (step % 4 == 1) more.open()
        if (step % 4 == 2) { menu.close(); box.popup.open() }
        box.currentIndex = step % 3
    }
}
