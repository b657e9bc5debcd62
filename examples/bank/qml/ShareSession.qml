import QtQuick
import Merovanta

// Screen sharing as the app shows it: what the library tells, whoever has begun a session and however it has ended. Has
// no looks of its own.
QtObject {
    id: session

    readonly property bool active: Merovanta.panoptra.running
    readonly property bool connecting: Merovanta.panoptra.state === "starting"
    readonly property string code: Merovanta.panoptra.shareId
    readonly property bool failed: Merovanta.panoptra.state === "ended" && Merovanta.panoptra.endReason === "failure"
    readonly property string words: {
        switch (Merovanta.panoptra.state) {
        case "starting": return qsTr("Connecting…");
        case "suspended": return qsTr("Sharing is paused");
        case "reconnecting": return qsTr("Reconnecting…");
        default: return qsTr("Screen shared · %1").arg(code);
        }
    }
    // Whether the visitor is identified or asked for help: there is something to forget.
    property bool known: false

    function start(): void {
        endFailed();
        Merovanta.panoptra.start();
    }

    // A session that could not go on after the background counts as started until it is stopped.
    function endFailed(): void {
        if (failed && Merovanta.panoptra.transport)
            stop();
    }

    function stop(): void {
        Merovanta.panoptra.stop();
    }

    // The customer may hand in papers.
    Component.onCompleted: Merovanta.webChat.attachmentsAllowed = true

    // The library shows the rest: a widget with the code, or with what went wrong.
    function getHelp(): void {
        known = true;
        endFailed();
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
        });
    }

    // Ends the session as well: the next customer at this device is somebody else. The demonstration account is
    // nobody's: with it, there is nothing to forget but a chat or a request for help.
    function forget(): void {
        if (!known)
            return;
        known = false;
        Merovanta.user.clear();
    }

    function note(text: string): void {
        if (active)
            Merovanta.panoptra.tag(text);
    }
}
