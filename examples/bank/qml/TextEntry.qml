import QtQuick
import QtQuick.Controls.Basic

// A bare line of input; the frame around it belongs to FormField.
TextField {
    // Groups the digits of a card number by four as they are typed.
    property bool groupsDigits: false

    anchors.fill: parent
    padding: 0
    clip: true
    verticalAlignment: TextInput.AlignVCenter
    color: Theme.ink
    placeholderTextColor: Theme.inkFaint
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    font.pixelSize: Theme.body
    selectByMouse: true
    background: null

    onTextEdited: {
        if (!groupsDigits)
            return;
        const digitsBefore = text.slice(0, cursorPosition).replace(/\D/g, "").length;
        const grouped = text.replace(/\D/g, "").slice(0, 16).replace(/(\d{4})(?=\d)/g, "$1 ");
        if (grouped === text)
            return;
        text = grouped;
        cursorPosition = Math.min(grouped.length, digitsBefore + Math.floor(Math.max(0, digitsBefore - 1) / 4));
    }
}
