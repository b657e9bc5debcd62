import QtQuick
import QtQuick.Controls.Basic

Switch {
    id: toggle

    required property string name

    implicitWidth: 50
    implicitHeight: 30
    padding: 0
    hoverEnabled: true
    Accessible.name: name

    indicator: Rectangle {
        implicitWidth: 50
        implicitHeight: 30
        radius: 15
        color: toggle.checked ? Theme.accent : Theme.control
        border.width: toggle.visualFocus ? 2 : 0
        border.color: Theme.ink

        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }

        Rectangle {
            x: toggle.checked ? parent.width - width - 3 : 3
            y: 3
            width: 24
            height: 24
            radius: 12
            color: Theme.surface

            Behavior on x {
                NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic }
            }
        }
    }
    contentItem: null
}
