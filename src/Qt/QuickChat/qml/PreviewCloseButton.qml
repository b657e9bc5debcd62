import QtQuick
import QtQuick.Templates as T

T.AbstractButton {
    id: root

    implicitWidth: 48
    implicitHeight: 48
    text: qsTr("Close")
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    background: Rectangle {
        anchors.fill: parent
        anchors.margins: 4
        radius: height / 2
        color: root.down ? "#d5d8df" : root.hovered ? "#e8eaef" : "transparent"
        border.width: root.visualFocus ? 2 : 0
        border.color: "#1f5bd1"
    }

    contentItem: Item {
        WidgetIcon {
            anchors.centerIn: parent
            color: "#1c2430"
            path: "M6 6 L18 18 M18 6 L6 18"
        }
    }
}
