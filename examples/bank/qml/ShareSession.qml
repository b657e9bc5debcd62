import QtQuick
import Bank
import Merovanta

// The state of screen sharing as the app shows it. Has no looks of its own.
Item {
    id: session

    required property ServiceProbe probe
    property bool active: false
    property bool failed: false
    property string code: ""
    // Whether the customer asked for help, and nobody has ended it.
    property bool helping: false
    // Whether the visitor is identified or asked for help: there is something to forget.
    property bool known: false

    function start(): void {
        failed = false;
        Merovanta.panoptra.start();
        code = Merovanta.panoptra.shareId;
        active = true;
        probe.check();
    }

    function stop(): void {
        Merovanta.panoptra.stop();
        ended();
    }

    // By the adviser.
    function ended(): void {
        active = false;
        helping = false;
    }

    // The customer may hand in papers.
    Component.onCompleted: Merovanta.webChat.attachmentsAllowed = true

    // The library shows the rest: a widget with the code, or with what went wrong.
    function getHelp(): void {
        known = true;
        helping = true;
        Merovanta.coBrowsing.start();
    }

    function openChat(): void {
        known = true;
        Merovanta.webChat.open("support");
    }

    // A session that runs goes on as another one, with another code.
    function identify(): void {
        known = true;
        Merovanta.user.tag({
            id: Ledger.customerId,
            firstname: Ledger.firstName,
            lastname: Ledger.lastName,
            email: Ledger.email,
            tags: ["Premier"]
        }, () => {
            if (active)
                probe.check();
        });
    }

    // Ends the session as well: the next customer at this device is somebody else. The demonstration account is
    // nobody's: with it, there is nothing to forget but a chat or a request for help.
    function forget(): void {
        if (!known)
            return;
        known = false;
        Merovanta.user.clear();
        ended();
    }

    function note(text: string): void {
        if (active)
            Merovanta.panoptra.tag(text);
    }

    Connections {
        target: session.probe

        // A late success must not share the screen of somebody who was told that nobody can see it.
        function onUnreachable(): void {
            session.stop();
            session.failed = true;
        }
    }

    // Another session has another code, and may come without the app being told.
    Timer {
        interval: 500
        repeat: true
        running: session.active
        onTriggered: session.code = Merovanta.panoptra.shareId
    }
}
