import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    Column {
        x: 60; y: 20
        spacing: 30
        SecretText { width: 20; text: "Wider than its item" }
        SecretText { id: tall; width: 90; height: 10; wrapMode: Text.Wrap; text: "Higher than its item as well" }
        SecretText { width: 60; horizontalAlignment: Text.AlignRight; text: "To the left" }
        SecretText { width: 50; height: 20; style: Text.Outline; styleColor: "#ff00ff"; font.italic: true; text: "Outlined" }
        TextInput { width: 40; text: "A line that goes on"; color: "#ff00ff"; font { bold: true; pixelSize: 20 } Merovanta.tag: 7; Merovanta.masked: naming.mark }
        TextEdit { width: 90; height: 9; text: "jpq overflow"; color: "#ff00ff"; font.pixelSize: 20; wrapMode: TextEdit.Wrap; Merovanta.tag: 7; Merovanta.masked: naming.mark }
        Open {}
    }
    SecretText { x: 150; y: 350; lineHeight: 0.6; text: "Two<br>lines"; font.pixelSize: 26; height: 5; verticalAlignment: Text.AlignVCenter }

    function drive(step) { tall.width = 60 + step % 4 * 20 }
}
