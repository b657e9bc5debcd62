import QtQuick

// Reminds the customer on every screen that somebody may be watching.
Rectangle {
    id: pill

    required property ShareSession session
    property alias text: words.text

    objectName: "sharingPill"
    visible: session.active
    width: content.width + 24
    height: 26
    radius: 13
    color: Theme.deep

    Accessible.role: Accessible.StaticText
    Accessible.name: words.text

    Row {
        id: content
        anchors.centerIn: parent
        spacing: 7

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 8
            height: 8
            radius: 4
            color: "#f2c14e"
        }
        Text {
            id: words
            anchors.verticalCenter: parent.verticalCenter
            text: pill.session.words
            color: Theme.deepInk
            font.pixelSize: 12
            font.weight: Font.Medium
        }
    }
}
