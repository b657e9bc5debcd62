import QtQuick
import QtQuick.Templates as T

T.AbstractButton {
    id: root

    property bool isProminent: false

    implicitWidth: Math.max(96, label.implicitWidth + 40)
    implicitHeight: Math.max(48, label.height + 20)
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()
    Keys.onEnterPressed: event => press(event)
    Keys.onReturnPressed: event => press(event)

    function press(event): void {
        if (!event.isAutoRepeat) root.clicked();
    }

    background: Rectangle {
        radius: 10
        color: root.isProminent ? (root.down ? "#1749ad" : "#1f5bd1") : (root.down ? "#d5d8df" : "#e8eaef")

        Rectangle {
            anchors.fill: parent
            anchors.margins: -4
            radius: 14
            color: "transparent"
            border.width: 2
            border.color: "#1f5bd1"
            visible: root.visualFocus
        }
    }

    contentItem: Item {
        Text {
            id: label

            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width - 24)
            text: root.text
            textFormat: Text.PlainText
            font.pixelSize: 16
            font.weight: Font.DemiBold
            color: root.isProminent ? "white" : "#1c2430"
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
        }
    }
}
