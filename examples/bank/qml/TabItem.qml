import QtQuick
import QtQuick.Controls.Basic

TabButton {
    id: tab

    required property string iconName
    readonly property color tint: checked ? Theme.accent : Theme.inkFaint

    implicitHeight: Theme.tabBarHeight
    Accessible.name: text

    background: Rectangle {
        color: Theme.bar

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.line
        }
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 8
            width: 60
            height: 32
            radius: 16
            color: tab.down ? Theme.line : tab.checked ? Theme.accentSoft : "transparent"
            border.width: tab.visualFocus ? 2 : 0
            border.color: Theme.accent

            Behavior on color {
                ColorAnimation { duration: Theme.quick }
            }
        }
    }

    contentItem: Item {
        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 6
            name: tab.iconName
            color: tab.tint
            size: 22
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 39
            text: tab.text
            color: tab.tint
            font.pixelSize: 12
            font.weight: tab.checked ? Font.DemiBold : Font.Medium
        }
    }
}
