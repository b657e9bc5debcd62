import QtQuick
import QtQuick.Controls.Basic
import Bank
import Merovanta

ApplicationWindow {
    id: window

    property bool sentinel: false
    property bool shareAtOnce: false
    readonly property bool sharing: shareSession.active

    width: 390
    height: 844
    minimumWidth: 320
    minimumHeight: 640
    visible: true
    title: qsTr("Alderbrook Bank")
    color: Theme.background

    function startSharing(): void {
        shareSession.start();
    }

    function stopSharing(): void {
        shareSession.stop();
    }

    function identify(): void {
        shareSession.identify();
    }

    function signOut(): void {
        shareSession.forget();
        stack.replace(loginPage);
    }

    Component.onCompleted: {
        // Black is what is private, and nothing else.
        Merovanta.privacy.fixedRectangles = false;
        Privacy.sentinel = sentinel;
        // Without a window manager nobody gives the window the focus.
        if (shareAtOnce)
            requestActivate();
    }

    // Not before the app is in front: the library opens a session anew that is running at that moment.
    onActiveChanged: {
        if (active && shareAtOnce) {
            shareAtOnce = false;
            startSharing();
        }
    }

    // Whoever closes the app shares nothing any more, whoever began it; the service is told before the process ends.
    onClosing: close => {
        if (!shareSession.active)
            return;
        close.accepted = false;
        visible = false;
        stopSharing();
        farewell.start();
    }

    Timer {
        id: farewell
        interval: 250
        onTriggered: Qt.quit()
    }

    // Transitions run on the GUI thread, where the masks are computed.
    StackView {
        id: stack

        // The keyboard goes where the customer goes.
        onCurrentItemChanged: currentItem?.forceActiveFocus(Qt.OtherFocusReason)

        anchors.fill: parent
        focus: true
        initialItem: loginPage

        pushEnter: Transition {
            NumberAnimation { property: "x"; from: stack.width; to: 0; duration: Theme.calm; easing.type: Easing.OutCubic }
        }
        pushExit: Transition {
            NumberAnimation { property: "x"; from: 0; to: -stack.width * 0.3; duration: Theme.calm; easing.type: Easing.OutCubic }
        }
        popEnter: Transition {
            NumberAnimation { property: "x"; from: -stack.width * 0.3; to: 0; duration: Theme.calm; easing.type: Easing.OutCubic }
        }
        popExit: Transition {
            NumberAnimation { property: "x"; from: 0; to: stack.width; duration: Theme.calm; easing.type: Easing.OutCubic }
        }
        replaceEnter: Transition {
            NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.calm }
        }
        replaceExit: Transition {
            NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.calm }
        }
    }

    SharingPill {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 10
        session: shareSession
    }

    ShareSession {
        id: shareSession
    }

    Component {
        id: loginPage

        LoginPage {
            onSignedIn: asCustomer => {
                if (asCustomer)
                    shareSession.identify();
                stack.replace(mainTabs, { session: shareSession });
            }
        }
    }

    Component {
        id: mainTabs

        MainTabs {
            id: tabs
            onAccountOpened: account => stack.push(accountPage, { account: account })
            onTransferSent: (recipient, amount) => {
                shareSession.note("transfer sent");
                stack.push(transferDonePage, { recipient: recipient, amount: amount });
            }
            // Qt 6.4 cannot bind a page of a stack to this file.
            onSignedOut: window.signOut() // qmllint disable unqualified
        }
    }

    Component {
        id: accountPage

        AccountPage {
            onBack: StackView.view.pop()
        }
    }

    Component {
        id: transferDonePage

        TransferDonePage {
            onDone: StackView.view.pop()
        }
    }
}
