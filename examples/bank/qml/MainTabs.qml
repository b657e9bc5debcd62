import QtQuick
import QtQuick.Controls.Basic

// What a signed-in customer moves between.
SwipeView {
    id: tabs

    required property ShareSession session
    signal accountOpened(int account)
    signal transferSent(string recipient, real amount)
    signal signedOut

    // Pages beside the window are not drawn.
    function shows(page: Item): bool {
        return Math.abs(page.x - (contentItem as ListView).contentX) < page.width;
    }

    interactive: false
    // No stop of its own: it would hand the focus back to what had it.
    activeFocusOnTab: false
    currentIndex: bar.currentIndex
    background: Rectangle { color: Theme.background }

    AccountsPage {
        objectName: "accountsPage"
        enabled: SwipeView.isCurrentItem
        visible: tabs.shows(this)
        onAccountOpened: account => tabs.accountOpened(account)
        onTransferWanted: bar.setCurrentIndex(1)
        onCardsWanted: bar.setCurrentIndex(2)
        onSharingWanted: bar.setCurrentIndex(3)
    }
    TransferPage {
        objectName: "transferPage"
        enabled: SwipeView.isCurrentItem
        visible: tabs.shows(this)
        onSent: (recipient, amount) => tabs.transferSent(recipient, amount)
    }
    CardsPage {
        objectName: "cardsPage"
        enabled: SwipeView.isCurrentItem
        visible: tabs.shows(this)
    }
    ProfilePage {
        objectName: "profilePage"
        enabled: SwipeView.isCurrentItem
        visible: tabs.shows(this)
        session: tabs.session
        onSignedOut: tabs.signedOut()
    }

    // Belongs to the view but is no page of it.
    readonly property TabBar bar: TabBar {
        id: bar
        parent: tabs
        y: tabs.height - height
        width: tabs.width
        height: Theme.tabBarHeight
        position: TabBar.Footer
        spacing: 0

        background: null

        TabItem { objectName: "tabAccounts"; text: qsTr("Accounts"); iconName: "accounts" }
        TabItem { objectName: "tabTransfer"; text: qsTr("Send"); iconName: "send" }
        TabItem { objectName: "tabCards"; text: qsTr("Cards"); iconName: "card" }
        TabItem { objectName: "tabProfile"; text: qsTr("Profile"); iconName: "person" }
    }
}
