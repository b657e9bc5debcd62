import QtQuick
import QtQuick.Controls.Basic

Button {
    id: button

    property bool busy: false

    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Theme.body
    font.weight: Font.DemiBold
    scale: down ? 0.985 : 1
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Behavior on scale {
        NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic }
    }

    contentItem: Item {
        Text {
            anchors.centerIn: parent
            visible: !button.busy
            text: button.text
            font: button.font
            color: button.enabled || button.busy ? Theme.accentText : Theme.inkFaint
        }
        Spinner {
            anchors.centerIn: parent
            visible: button.busy
        }
    }

    background: Rectangle {
        radius: Theme.fieldRadius
        color: !button.enabled && !button.busy ? Theme.line : button.down ? Theme.accentPressed : Theme.accent

        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: -4
            visible: button.visualFocus
            radius: parent.radius + 4
            color: "transparent"
            border.width: 2
            border.color: Theme.accent
        }
    }
}
