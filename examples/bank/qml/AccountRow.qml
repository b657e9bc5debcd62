import QtQuick

ListRow {
    id: row

    required property Account account

    title: account.name
    detail: account.kind
    iconName: account.iconName

    PrivateText {
        text: Ledger.money(row.account.balance)
        font.weight: Font.DemiBold
    }
    Icon {
        name: "chevron"
        color: Theme.inkFaint
        size: 16
    }
}
