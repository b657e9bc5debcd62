import QtQuick
import QtQuick.Layouts

FocusScope {
    id: page

    required property int account
    readonly property Account details: Ledger.accounts[account]
    signal back

    objectName: "accountPage"
    focus: true
    Keys.onEscapePressed: back()
    Keys.onBackPressed: back()

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    NavigationBar {
        id: bar
        width: parent.width
        title: page.details.name
        onBack: page.back()
    }

    TransactionList {
        objectName: "accountTransactions"
        anchors.fill: parent
        anchors.topMargin: bar.height
        bottomMargin: 24

        model: {
            const rows = [];
            for (let i = 0; i < Ledger.transactions.count; ++i) {
                const entry = Ledger.transactions.get(i);
                if (entry.account === page.account)
                    rows.push({ payee: entry.payee, note: entry.note, icon: entry.icon, amount: entry.amount, daysAgo: entry.daysAgo });
            }
            return rows;
        }

        header: Item {
            id: head

            // Qt 6.4 cannot bind the header of a list to this file.
            readonly property Account details: page.details // qmllint disable unqualified

            width: ListView.view.width
            implicitHeight: top.implicitHeight + 8

            ColumnLayout {
                id: top
                x: Theme.columnX(parent.width)
                width: Theme.columnWidth(parent.width)
                spacing: 0

                Text {
                    Layout.topMargin: 12
                    Layout.alignment: Qt.AlignHCenter
                    text: qsTr("Available balance")
                    color: Theme.inkSoft
                    font.pixelSize: Theme.label
                }
                PrivateText {
                    Layout.topMargin: 4
                    Layout.alignment: Qt.AlignHCenter
                    text: Ledger.money(head.details.balance)
                    viewTag: Privacy.accountBalance
                    font.pixelSize: 40
                    font.weight: Font.Bold
                }

                Surface {
                    Layout.fillWidth: true
                    Layout.topMargin: 22
                    implicitHeight: facts.implicitHeight + 32

                    ColumnLayout {
                        id: facts
                        x: 16
                        y: 16
                        width: parent.width - 32
                        spacing: 12

                        DetailRow {
                            Layout.fillWidth: true
                            label: qsTr("Type")
                            value: head.details.kind
                        }
                        DetailRow {
                            Layout.fillWidth: true
                            label: qsTr("IBAN")
                            value: head.details.iban
                            isPrivate: true
                            viewTag: Privacy.accountIban
                        }
                        DetailRow {
                            Layout.fillWidth: true
                            label: qsTr("Account holder")
                            value: Ledger.customerName
                        }
                    }
                }

                Text {
                    Layout.topMargin: 26
                    Layout.bottomMargin: 4
                    text: qsTr("Transactions")
                    color: Theme.ink
                    font.pixelSize: Theme.heading
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
            }
        }

        delegate: TransactionRow {
            required property var modelData

            x: Theme.columnX(ListView.view.width) - 16
            width: Theme.columnWidth(ListView.view.width) + 32
            title: modelData.payee
            detail: Ledger.dayName(modelData.daysAgo) + " · " + modelData.note
            iconName: modelData.icon
            amount: modelData.amount
        }
    }
}
