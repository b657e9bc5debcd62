import QtQuick

FocusScope {
    id: root

    property alias title: heading.text
    property alias message: body.text
    property alias acceptText: acceptButton.text
    property alias declineText: declineButton.text
    property alias canBeDeclined: declineButton.visible

    // Whether there is little height to spend.
    property bool isLow

    // A key or a tap that was meant for what the question covers must not answer it.
    property bool isAnswerable: false

    Timer {
        interval: 500
        running: true
        onTriggered: root.isAnswerable = true
    }

    readonly property real gap: 12
    readonly property real half: (width - gap) / 2
    readonly property bool isStacked: !canBeDeclined || (!isLow && Math.max(acceptButton.implicitWidth, declineButton.implicitWidth) > half)

    signal accepted
    signal declined

    function scroll(distance: real): void {
        message.contentY = Math.max(0, Math.min(message.contentHeight - message.height, message.contentY + distance));
    }

    implicitHeight: message.y + body.height + 24 + buttons.height
    focus: true
    Keys.onUpPressed: scroll(-60)
    Keys.onDownPressed: scroll(60)

    Text {
        id: heading

        width: parent.width
        textFormat: Text.PlainText
        font.pixelSize: 20
        font.weight: Font.DemiBold
        color: "#1c2430"
        wrapMode: Text.Wrap
        maximumLineCount: root.isLow ? 1 : 3
        elide: Text.ElideRight
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Flickable {
        id: message

        y: heading.height + 10
        width: parent.width
        height: Math.max(0, buttons.y - 24 - y)
        contentHeight: body.height
        clip: true
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds

        Text {
            id: body

            objectName: "message"
            width: message.width - (message.interactive ? 12 : 0)
            textFormat: Text.PlainText
            font.pixelSize: 16
            lineHeight: 1.25
            color: "#3c4656"
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Rectangle {
            parent: message
            x: message.width - width
            y: message.contentY / (message.contentHeight - message.height) * (message.height - height)
            width: 4
            height: Math.max(24, message.visibleArea.heightRatio * message.height)
            radius: 2
            color: "#b4bac6"
            visible: message.interactive
        }
    }

    Item {
        id: buttons

        y: root.height - height
        width: parent.width
        height: root.isStacked ? acceptButton.height + (root.canBeDeclined ? root.gap + declineButton.height : 0) : Math.max(acceptButton.height, declineButton.height)

        AlertButton {
            id: acceptButton

            objectName: "accept"
            x: root.isStacked ? 0 : root.half + root.gap
            width: root.isStacked ? root.width : root.half
            isProminent: true
            focus: !root.canBeDeclined
            onClicked: if (root.isAnswerable) root.accepted()
        }

        AlertButton {
            id: declineButton

            objectName: "decline"
            y: root.isStacked ? acceptButton.height + root.gap : 0
            width: root.isStacked ? root.width : root.half
            focus: root.canBeDeclined
            onClicked: if (root.isAnswerable) root.declined()
        }
    }
}
