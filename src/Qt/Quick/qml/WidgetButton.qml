import QtQuick
import QtQuick.Templates as T

// A button that tells its text to screen readers only. A click leaves the host's keyboard focus where it is.
T.AbstractButton {
    id: root

    required property string iconPath
    property real focusRadius: 10

    implicitWidth: 48
    implicitHeight: 48
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()
    Keys.onEnterPressed: event => press(event)
    Keys.onReturnPressed: event => press(event)

    function press(event): void {
        if (!event.isAutoRepeat) root.clicked();
    }

    contentItem: Item {
        WidgetIcon {
            anchors.centerIn: parent
            path: root.iconPath
            opacity: root.down ? 0.5 : 1
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: 3
            radius: root.focusRadius
            color: "transparent"
            border.width: 2
            border.color: "#8ab4ff"
            visible: root.visualFocus
        }
    }
}
