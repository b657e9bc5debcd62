pragma Singleton

import QtQuick

// The customer and the accounts this demonstration is about; transfers live as long as the process.
QtObject {
    readonly property string customerName: "Margaret Hollis"
    readonly property string firstName: "Margaret"
    readonly property string lastName: "Hollis"
    readonly property string customerId: "margaret.hollis"
    readonly property string customerNumber: "4402 7718"
    readonly property string email: "m.hollis@example.org"
    readonly property string phone: "+353 1 555 0142"
    readonly property string ownCardNumber: "5105 1051 0510 5100"
    readonly property string securityCode: "294"
    readonly property string cardExpiry: "09/29"

    readonly property list<Account> accounts: [
        Account {
            name: qsTr("Everyday")
            kind: qsTr("Current account")
            iban: "IE89 ALDR 9901 1710 2448 71"
            iconName: "wallet"
            balance: 3482.19
        },
        Account {
            name: qsTr("Rainy day")
            kind: qsTr("Savings at 2.35%")
            iban: "IE44 ALDR 9901 1710 2449 05"
            iconName: "leaf"
            balance: 12940.0
        },
        Account {
            name: qsTr("Household")
            kind: qsTr("Joint account")
            iban: "IE05 ALDR 9901 1710 2511 36"
            iconName: "house"
            balance: 1206.77
        }
    ]

    readonly property real totalBalance: {
        let sum = 0;
        for (let i = 0; i < accounts.length; ++i)
            sum += accounts[i].balance;
        return sum;
    }

    // Newest first. Roles: account, payee, note, icon, amount, daysAgo.
    readonly property ListModel transactions: ListModel {}

    function money(amount: real): string {
        return Number(amount).toLocaleCurrencyString(Qt.locale(), "€");
    }

    function signedMoney(amount: real): string {
        return (amount < 0 ? "−" : "+") + money(Math.abs(amount));
    }

    function dayName(daysAgo: int): string {
        if (daysAgo === 0)
            return qsTr("Today");
        if (daysAgo === 1)
            return qsTr("Yesterday");
        const day = new Date();
        day.setDate(day.getDate() - daysAgo);
        return day.toLocaleDateString(Qt.locale(), "dddd d MMMM");
    }

    function balanceOf(account: int): real {
        return accounts[account].balance;
    }

    function transfer(account: int, recipient: string, amount: real, reference: string): void {
        accounts[account].balance -= amount;
        transactions.insert(0, {
            account: account,
            payee: recipient,
            note: reference === "" ? qsTr("Card transfer") : reference,
            icon: "send",
            amount: -amount,
            daysAgo: 0
        });
    }

    Component.onCompleted: {
        // Account, payee, note, icon, amount, day of the first occurrence, days between occurrences.
        const habits = [
            [0, "Fennel & Rye", "Café", "cup", -4.80, 0, 2],
            [0, "Northgate Market", "Groceries", "basket", -63.42, 1, 5],
            [0, "City Tram", "Travel pass", "tram", -2.60, 0, 3],
            [2, "Lumen Energy", "Electricity", "bolt", -118.05, 4, 30],
            [0, "Halden Studio", "Salary", "briefcase", 2950.00, 6, 30],
            [2, "Brightwater Utilities", "Water", "drop", -36.90, 9, 30],
            [0, "Margaret Hollis", "To Rainy day", "leaf", -300.00, 5, 30],
            [1, "Margaret Hollis", "From Everyday", "leaf", 300.00, 5, 30],
            [0, "Paper Lantern Books", "Books", "book", -27.95, 3, 11],
            [2, "Oakfield Lettings", "Rent", "house", -940.00, 7, 30],
            [0, "Larch Pharmacy", "Pharmacy", "cross", -14.20, 8, 13],
            [2, "Nora Whitfield", "Household share", "person", 620.00, 6, 30]
        ];
        const entries = [];
        for (let h = 0; h < habits.length; ++h) {
            const [account, payee, note, icon, amount, first, every] = habits[h];
            for (let day = first, n = 0; day < 45; day += every, ++n) {
                // Small shops do not ask for the same sum twice.
                const varied = every < 30 ? Math.round(amount * (100 + (n * 37) % 41 - 20)) / 100 : amount;
                entries.push({ account, payee, note, icon, amount: varied, daysAgo: day });
            }
        }
        entries.sort((a, b) => a.daysAgo - b.daysAgo);
        transactions.append(entries);
    }
}
