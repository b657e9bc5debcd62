import QtQuick
import QtQuick.Layouts

// A label, a frame around one TextEntry or PrivateInput, and room for what is wrong with it.
ColumnLayout {
    id: field

    required property string label
    property string error: ""
    default property alias content: slot.data
    readonly property Item input: slot.children.length > 0 ? slot.children[0] : null
    readonly property bool active: input !== null && input.activeFocus

    spacing: 6

    Text {
        text: field.label
        color: Theme.inkSoft
        font.pixelSize: Theme.label
        font.weight: Font.Medium
        Accessible.ignored: true
    }

    Rectangle {
        Layout.fillWidth: true
        implicitHeight: Theme.controlHeight - 2
        radius: Theme.fieldRadius
        color: Theme.surface
        border.width: field.active || field.error !== "" ? 2 : 1
        border.color: field.error !== "" ? Theme.danger : field.active ? Theme.accent : Theme.control

        Behavior on border.color {
            ColorAnimation { duration: Theme.quick }
        }

        TapHandler {
            onTapped: field.input?.forceActiveFocus(Qt.MouseFocusReason)
        }

        Item {
            id: slot
            anchors.fill: parent
            anchors.leftMargin: 14
            anchors.rightMargin: 14
            anchors.topMargin: 8
            anchors.bottomMargin: 8
        }
    }

    Text {
        visible: field.error !== ""
        text: field.error
        color: Theme.danger
        font.pixelSize: Theme.caption
        Layout.fillWidth: true
        wrapMode: Text.WordWrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
