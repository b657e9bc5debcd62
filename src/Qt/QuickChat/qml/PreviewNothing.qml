import QtQuick

// In the place of what cannot be shown. The button hands the document to another program.
FocusScope {
    id: root

    property bool canBeOpened

    // A key or a tap that was meant for what the preview covers must not open anything.
    property bool isReady: false

    signal openWanted

    Timer {
        interval: 500
        running: true
        onTriggered: root.isReady = true
    }

    Column {
        anchors.centerIn: parent
        width: parent.width - 48
        spacing: 20

        Text {
            objectName: "noPreview"
            width: parent.width
            text: root.canBeOpened ? qsTr("There is no preview of this file. Another program can open it.") : qsTr("There is no preview of this file.")
            font.pixelSize: 16
            color: "#3c4656"
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        AlertButton {
            // No tap of an agent's gets here.
            readonly property bool isMerovantaVisitorsOwn: true

            objectName: "openDocument"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.canBeOpened
            isProminent: true
            text: qsTr("Open")
            onClicked: if (root.isReady) root.openWanted()
        }
    }
}
