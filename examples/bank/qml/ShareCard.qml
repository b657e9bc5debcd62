import QtQuick
import QtQuick.Layouts

// Starts and stops screen sharing and shows the code that the adviser asks for.
Surface {
    id: card

    required property ShareSession session

    readonly property string explanation: session.failed ? qsTr("We cannot reach our advisers right now. Check your connection and try again.")
        : session.connecting ? qsTr("Calling our advisers. Nothing is shared yet.")
        : session.active ? qsTr("Read this code to your adviser. Private details stay hidden.")
        : qsTr("Let an adviser see this app while you talk. Balances, passwords and card numbers stay hidden.")

    implicitHeight: column.implicitHeight + 36

    ColumnLayout {
        id: column
        x: 16
        y: 18
        width: parent.width - 32
        spacing: 14

        RowLayout {
            spacing: 12

            Icon {
                name: card.session.failed ? "alert" : "screen"
                color: card.session.failed ? Theme.danger : Theme.accent
            }
            Text {
                Layout.fillWidth: true
                text: qsTr("Share my screen")
                color: Theme.ink
                font.pixelSize: Theme.heading
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
        }

        Text {
            Layout.fillWidth: true
            text: card.explanation
            color: card.session.failed ? Theme.danger : Theme.inkSoft
            wrapMode: Text.WordWrap
            font.pixelSize: Theme.label
            lineHeight: 1.25
        }

        Row {
            id: digits
            objectName: "shareCode"
            Layout.alignment: Qt.AlignHCenter
            visible: card.session.active && !card.session.connecting
            spacing: 8
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("Share code %1").arg(card.session.code.split("").join(" "))

            Repeater {
                model: card.session.code.split("")

                Rectangle {
                    id: digit

                    required property string modelData

                    width: 52
                    height: 64
                    radius: Theme.fieldRadius
                    color: Theme.accentSoft

                    Text {
                        anchors.centerIn: parent
                        text: digit.modelData
                        color: Theme.ink
                        font.pixelSize: 36
                        font.weight: Font.Bold
                    }
                }
            }
        }

        PrimaryButton {
            objectName: "startSharingButton"
            Layout.fillWidth: true
            visible: !card.session.active
            text: card.session.failed ? qsTr("Try again") : qsTr("Start sharing")
            onClicked: card.session.start()
        }
        SecondaryButton {
            objectName: "stopSharingButton"
            Layout.fillWidth: true
            visible: card.session.active
            text: qsTr("Stop sharing")
            onClicked: card.session.stop()
        }
    }
}
