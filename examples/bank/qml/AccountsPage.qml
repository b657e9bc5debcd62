import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

FocusScope {
    id: page

    signal accountOpened(int account)
    signal transferWanted
    signal cardsWanted
    signal sharingWanted

    TransactionList {
        objectName: "accountsList"
        anchors.fill: parent
        anchors.bottomMargin: Theme.tabBarHeight
        model: Ledger.transactions
        bottomMargin: 16

        section.property: "daysAgo"
        section.delegate: Text {
            required property string section

            x: Theme.columnX(ListView.view.width)
            height: 42
            verticalAlignment: Text.AlignBottom
            bottomPadding: 6
            text: Ledger.dayName(Number(section))
            color: Theme.inkSoft
            font.pixelSize: Theme.caption
            font.weight: Font.DemiBold
        }

        header: Item {
            id: head

            readonly property string greeting: {
                const hour = new Date().getHours();
                return hour < 12 ? qsTr("Good morning") : hour < 18 ? qsTr("Good afternoon") : qsTr("Good evening");
            }

            width: ListView.view.width
            implicitHeight: top.implicitHeight + Theme.safeTop

            ColumnLayout {
                id: top
                x: Theme.columnX(parent.width)
                y: Theme.safeTop
                width: Theme.columnWidth(parent.width)
                spacing: 0

                Text {
                    text: head.greeting
                    color: Theme.inkSoft
                    font.pixelSize: Theme.label
                }
                Text {
                    text: Ledger.firstName
                    color: Theme.ink
                    font.pixelSize: Theme.title
                    font.weight: Font.Bold
                    font.letterSpacing: -0.4
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }

                Rectangle {
                    Layout.fillWidth: true
                    Layout.topMargin: 16
                    implicitHeight: actions.y + actions.height + 22
                    radius: 22
                    color: Theme.deep

                    Text {
                        x: 20
                        y: 20
                        text: qsTr("Total balance")
                        color: Theme.deepText
                        font.pixelSize: Theme.label
                    }
                    PrivateText {
                        x: 20
                        y: 42
                        text: Ledger.money(Ledger.totalBalance)
                        viewTag: Privacy.totalBalance
                        color: Theme.deepInk
                        font.pixelSize: Theme.display
                        font.weight: Font.Bold
                    }

                    Flow {
                        id: actions
                        x: 20
                        y: 108
                        width: parent.width - 32
                        spacing: 8

                        Repeater {
                            model: [
                                { text: qsTr("Send"), iconName: "send", run: () => page.transferWanted() },
                                { text: qsTr("Cards"), iconName: "card", run: () => page.cardsWanted() },
                                { text: qsTr("Get help"), iconName: "screen", run: () => page.sharingWanted() }
                            ]

                            AbstractButton {
                                id: action

                                required property var modelData

                                implicitHeight: 44
                                leftPadding: 14
                                rightPadding: 16
                                focusPolicy: Qt.StrongFocus
                                Keys.onReturnPressed: clicked()
                                Keys.onEnterPressed: clicked()
                                Accessible.name: modelData.text
                                onClicked: modelData.run()

                                background: Rectangle {
                                    radius: 22
                                    color: action.down ? Qt.darker(Theme.deepControl, 1.15) : Theme.deepControl
                                    border.width: action.visualFocus ? 2 : 0
                                    border.color: Theme.deepInk
                                }
                                contentItem: Row {
                                    spacing: 8

                                    Icon {
                                        anchors.verticalCenter: parent.verticalCenter
                                        name: action.modelData.iconName
                                        color: Theme.deepInk
                                        size: 18
                                    }
                                    Text {
                                        anchors.verticalCenter: parent.verticalCenter
                                        text: action.modelData.text
                                        color: Theme.deepInk
                                        font.pixelSize: Theme.label
                                        font.weight: Font.Medium
                                    }
                                }
                            }
                        }
                    }
                }

                Text {
                    Layout.topMargin: 24
                    Layout.bottomMargin: 10
                    text: qsTr("Accounts")
                    color: Theme.ink
                    font.pixelSize: Theme.heading
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }

                Surface {
                    Layout.fillWidth: true
                    implicitHeight: rows.implicitHeight

                    Column {
                        id: rows
                        width: parent.width

                        Repeater {
                            model: Ledger.accounts.length

                            AccountRow {
                                required property int index

                                objectName: "accountRow" + index
                                width: parent.width
                                account: Ledger.accounts[index]
                                separated: index > 0
                                // Qt 6.4 cannot bind the header of a list to this file.
                                onClicked: page.accountOpened(index) // qmllint disable unqualified
                            }
                        }
                    }
                }

                Text {
                    Layout.topMargin: 28
                    text: qsTr("Recent transactions")
                    color: Theme.ink
                    font.pixelSize: Theme.heading
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
            }
        }

        delegate: TransactionRow {
            id: entry

            required property var model

            x: Theme.columnX(ListView.view.width) - 16
            width: Theme.columnWidth(ListView.view.width) + 32
            height: 64
            title: model.payee
            detail: model.note
            iconName: model.icon
            amount: model.amount
        }
    }
}
