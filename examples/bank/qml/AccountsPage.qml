import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

FocusScope {
    id: page

    signal accountOpened(int account)
    signal transferWanted
    signal cardsWanted
    signal sharingWanted

    readonly property string greeting: {
        const hour = new Date().getHours();
        return hour < 12 ? qsTr("Good morning") : hour < 18 ? qsTr("Good afternoon") : qsTr("Good evening");
    }

    ListView {
        id: list
        objectName: "accountsList"
        anchors.fill: parent
        clip: true
        pixelAligned: true
        // Rows outside the list are masked too; the fewer there are, the less of the tab bar goes black.
        cacheBuffer: 0
        model: Ledger.transactions
        bottomMargin: 16

        // The header grows while it is laid out; stay at its top until the customer scrolls.
        property bool scrolled: false
        onMovementStarted: scrolled = true
        onOriginYChanged: {
            if (!scrolled)
                contentY = originY;
        }

        ScrollBar.vertical: ScrollBar {
            width: 6
        }

        section.property: "daysAgo"
        section.delegate: Text {
            required property string section

            x: Theme.margin
            height: 42
            verticalAlignment: Text.AlignBottom
            bottomPadding: 6
            text: Ledger.dayName(Number(section))
            color: Theme.inkSoft
            font.pixelSize: Theme.caption
            font.weight: Font.DemiBold
        }

        header: Item {
            width: list.width
            implicitHeight: top.implicitHeight + Theme.safeTop

            ColumnLayout {
                id: top
                x: Theme.margin
                y: Theme.safeTop
                width: parent.width - 2 * x
                spacing: 0

                Text {
                    text: page.greeting
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
                    implicitHeight: 174
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
                        color: Theme.accentText
                        font.pixelSize: Theme.display
                        font.weight: Font.Bold
                    }

                    Row {
                        x: 20
                        y: 108
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
                                Accessible.name: modelData.text
                                onClicked: modelData.run()

                                background: Rectangle {
                                    radius: 22
                                    color: action.down ? "#2b6655" : "#1a5041"
                                    border.width: action.visualFocus ? 2 : 0
                                    border.color: Theme.accentText
                                }
                                contentItem: Row {
                                    spacing: 8

                                    Icon {
                                        anchors.verticalCenter: parent.verticalCenter
                                        name: action.modelData.iconName
                                        color: Theme.accentText
                                        size: 18
                                    }
                                    Text {
                                        anchors.verticalCenter: parent.verticalCenter
                                        text: action.modelData.text
                                        color: Theme.accentText
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
                                width: rows.width
                                account: Ledger.accounts[index]
                                separated: index > 0
                                onClicked: page.accountOpened(index)
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

            x: 4
            width: ListView.view.width - 8
            height: 64
            title: model.payee
            detail: model.note
            iconName: model.icon
            amount: model.amount
        }
    }
}
