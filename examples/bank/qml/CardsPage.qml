import QtQuick
import QtQuick.Layouts

FocusScope {
    id: page

    property bool frozen: false
    readonly property real spent: 412.30
    readonly property real limit: 1500

    FocusKeeper {
        view: scroll
    }

    Flickable {
        id: scroll
        anchors.fill: parent
        anchors.bottomMargin: Theme.tabBarHeight
        contentHeight: content.implicitHeight + content.y + 20
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        pixelAligned: true

        ColumnLayout {
            id: content
            x: Theme.columnX(parent.width)
            y: Theme.safeTop
            width: Theme.columnWidth(parent.width)
            spacing: 16

            Text {
                text: qsTr("Cards")
                color: Theme.ink
                font.pixelSize: Theme.title
                font.weight: Font.Bold
                font.letterSpacing: -0.4
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }

            BankCard {
                objectName: "bankCard"
                Layout.fillWidth: true
                frozen: page.frozen
            }
            Text {
                Layout.alignment: Qt.AlignHCenter
                text: page.frozen ? qsTr("Frozen: nobody can pay with this card.") : qsTr("Tap the card to turn it over.")
                color: Theme.inkSoft
                font.pixelSize: Theme.caption
            }

            Surface {
                Layout.fillWidth: true
                implicitHeight: spending.implicitHeight + 36

                ColumnLayout {
                    id: spending
                    x: 16
                    y: 18
                    width: parent.width - 32
                    spacing: 10

                    RowLayout {
                        Layout.fillWidth: true

                        Text {
                            Layout.fillWidth: true
                            text: qsTr("Spent this month")
                            color: Theme.ink
                            font.pixelSize: Theme.body
                            font.weight: Font.Medium
                        }
                        PrivateText {
                            text: Ledger.money(page.spent)
                            font.weight: Font.DemiBold
                        }
                    }
                    Rectangle {
                        Layout.fillWidth: true
                        implicitHeight: 8
                        radius: 4
                        color: Theme.accentSoft

                        Rectangle {
                            width: parent.width * page.spent / page.limit
                            height: parent.height
                            radius: 4
                            color: Theme.accent
                        }
                    }
                    Text {
                        text: qsTr("Monthly limit %1").arg(Ledger.money(page.limit))
                        color: Theme.inkSoft
                        font.pixelSize: Theme.caption
                    }
                }
            }

            Surface {
                Layout.fillWidth: true
                implicitHeight: controls.implicitHeight

                Column {
                    id: controls
                    width: parent.width

                    ListRow {
                        width: parent.width
                        title: qsTr("Freeze card")
                        detail: qsTr("Stop all payments for now")
                        iconName: "snow"
                        acts: false
                        onClicked: page.frozen = !page.frozen

                        Toggle {
                            objectName: "freezeToggle"
                            name: qsTr("Freeze card")
                            checked: page.frozen
                            onToggled: page.frozen = checked
                        }
                    }
                    ListRow {
                        width: parent.width
                        title: qsTr("Contactless")
                        detail: qsTr("Pay by holding the card close")
                        iconName: "wave"
                        separated: true
                        acts: false
                        onClicked: contactless.toggle()

                        Toggle {
                            id: contactless
                            name: qsTr("Contactless")
                            checked: true
                        }
                    }
                    ListRow {
                        width: parent.width
                        title: qsTr("Online payments")
                        detail: qsTr("Shops and subscriptions")
                        iconName: "globe"
                        separated: true
                        acts: false
                        onClicked: online.toggle()

                        Toggle {
                            id: online
                            name: qsTr("Online payments")
                            checked: true
                        }
                    }
                }
            }
        }
    }
}
