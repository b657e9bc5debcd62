import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "parts"

Stage {
    Open { x: 10; y: 10 }
    Dialog {
        id: dialog
        parent: Overlay.overlay
        anchors.centerIn: parent
        title: "Confirm"
        modal: true
        standardButtons: Dialog.Ok | Dialog.Cancel
        ColumnLayout { Label { text: "Code" } SecretField {} SecretText { Layout.leftMargin: 12 } }
        enter: Transition { NumberAnimation { property: "scale"; from: 0.7; to: 1; duration: 120 } }
    }

    function drive(step) { dialog.visible = step % 4 != 3 }
}
