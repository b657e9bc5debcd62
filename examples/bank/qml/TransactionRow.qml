import QtQuick

ListRow {
    id: row

    required property real amount

    acts: false

    PrivateText {
        text: Ledger.signedMoney(row.amount)
        color: row.amount > 0 ? Theme.positive : Theme.ink
        font.weight: Font.Medium
    }
}
