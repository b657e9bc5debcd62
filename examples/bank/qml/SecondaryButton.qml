import QtQuick
import QtQuick.Controls.Basic

Button {
    id: button

    property color tint: Theme.accent
    property color fill: Theme.accentSoft

    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    font.pixelSize: Theme.body
    font.weight: Font.DemiBold
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.tint
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        radius: Theme.fieldRadius
        color: button.down ? Qt.darker(button.fill, 1.07) : button.fill
        border.width: button.visualFocus ? 2 : 0
        border.color: button.tint

        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }
    }
}
