pragma Singleton

import QtQuick

// Every view tag of the app. A service that names a tag, or one of the types PrivateText and PrivateInput,
// gets a black rectangle in its place. Each number belongs to one view only.
QtObject {
    readonly property int userName: 10
    readonly property int password: 11
    readonly property int cardNumber: 12
    readonly property int amount: 13
    readonly property int totalBalance: 14
    readonly property int accountBalance: 15
    readonly property int accountIban: 16
    readonly property int ownCardNumber: 17
    readonly property int securityCode: 18
    readonly property int customerNumber: 19
    readonly property int email: 20
    readonly property int phone: 21
    readonly property int confirmedAmount: 22
    readonly property int confirmedCardNumber: 23
    readonly property int sentAmount: 24
    readonly property int recipient: 25
    readonly property int cardHolder: 26

    // Paints private items on a colour that appears nowhere else, so that a test can look for it.
    property bool sentinel: false
    readonly property color sentinelColor: "#ff00ff"
}
