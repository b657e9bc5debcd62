import QtQuick
import QtQuick.Layouts

FocusScope {
    id: page

    required property ShareSession session
    signal signedOut

    FocusKeeper {
        view: scroll
    }

    Flickable {
        id: scroll
        objectName: "profileScroll"
        anchors.fill: parent
        anchors.bottomMargin: Theme.tabBarHeight
        contentHeight: content.implicitHeight + content.y + 24
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        pixelAligned: true

        ColumnLayout {
            id: content
            x: Theme.columnX(parent.width)
            y: Theme.safeTop
            width: Theme.columnWidth(parent.width)
            spacing: 16

            RowLayout {
                Layout.fillWidth: true
                spacing: 16

                Rectangle {
                    implicitWidth: 60
                    implicitHeight: 60
                    radius: 30
                    color: Theme.deep

                    Text {
                        anchors.centerIn: parent
                        text: Ledger.customerName.split(" ").map(word => word[0]).join("")
                        color: Theme.deepInk
                        font.pixelSize: 22
                        font.weight: Font.DemiBold
                    }
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 4

                    Text {
                        text: Ledger.customerName
                        color: Theme.ink
                        font.pixelSize: 24
                        font.weight: Font.Bold
                        font.letterSpacing: -0.3
                        Accessible.role: Accessible.Heading
                        Accessible.name: text
                    }
                    RowLayout {
                        spacing: 6

                        Text {
                            text: qsTr("Customer")
                            color: Theme.inkSoft
                            font.pixelSize: Theme.label
                        }
                        PrivateText {
                            text: Ledger.customerNumber
                            viewTag: Privacy.customerNumber
                            color: Theme.inkSoft
                            font.pixelSize: Theme.label
                        }
                    }
                }
            }

            ShareCard {
                Layout.fillWidth: true
                session: page.session
            }

            Surface {
                Layout.fillWidth: true
                implicitHeight: support.implicitHeight

                Column {
                    id: support
                    width: parent.width

                    ListRow {
                        objectName: "openChat"
                        width: parent.width
                        title: qsTr("Chat with us")
                        detail: qsTr("Ask a question, get documents")
                        iconName: "chat"
                        onClicked: page.session.openChat()
                    }
                    ListRow {
                        objectName: "getHelp"
                        width: parent.width
                        title: qsTr("Get help")
                        detail: qsTr("Go through the app with an adviser")
                        iconName: "help"
                        separated: true
                        enabled: !page.session.active
                        opacity: enabled ? 1 : 0.5
                        onClicked: page.session.getHelp()
                    }
                }
            }

            Surface {
                Layout.fillWidth: true
                implicitHeight: contact.implicitHeight

                Column {
                    id: contact
                    width: parent.width

                    ListRow {
                        width: parent.width
                        title: qsTr("E-mail")
                        acts: false
                        iconName: "mail"

                        PrivateText {
                            text: Ledger.email
                            viewTag: Privacy.email
                            color: Theme.inkSoft
                            font.pixelSize: Theme.label
                        }
                    }
                    ListRow {
                        width: parent.width
                        title: qsTr("Phone")
                        acts: false
                        iconName: "phone"
                        separated: true

                        PrivateText {
                            text: Ledger.phone
                            viewTag: Privacy.phone
                            color: Theme.inkSoft
                            font.pixelSize: Theme.label
                        }
                    }
                }
            }

            Surface {
                Layout.fillWidth: true
                implicitHeight: settings.implicitHeight

                Column {
                    id: settings
                    width: parent.width

                    ListRow {
                        width: parent.width
                        title: qsTr("Notifications")
                        detail: qsTr("For every payment")
                        iconName: "bell"
                        acts: false
                        onClicked: notifications.toggle()

                        Toggle {
                            id: notifications
                            name: qsTr("Notifications")
                            checked: true
                        }
                    }
                    ListRow {
                        width: parent.width
                        title: qsTr("Fingerprint")
                        detail: qsTr("Sign in without the password")
                        iconName: "finger"
                        separated: true
                        acts: false
                        onClicked: fingerprint.toggle()

                        Toggle {
                            id: fingerprint
                            objectName: "fingerprintToggle"
                            name: qsTr("Fingerprint")
                        }
                    }
                }
            }

            SecondaryButton {
                objectName: "signOutButton"
                Layout.fillWidth: true
                text: qsTr("Sign out")
                tint: Theme.danger
                fill: Theme.dangerSoft
                onClicked: page.signedOut()
            }
        }
    }
}
