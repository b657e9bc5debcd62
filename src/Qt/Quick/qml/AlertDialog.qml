import QtQuick
import QtQuick.Templates as T

T.Dialog {
    id: root

    property string message
    property string acceptText
    property string declineText
    property bool canBeDeclined: true
    readonly property bool isMerovantaAlert: true

    objectName: "alert"
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(400, parent.width - 32)
    height: Math.min(implicitHeight, parent.height - 32)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 24
    modal: true
    focus: true
    closePolicy: canBeDeclined ? T.Popup.CloseOnEscape : T.Popup.NoAutoClose

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 150
        }
        NumberAnimation {
            property: "scale"
            from: 0.95
            to: 1
            duration: 150
            easing.type: Easing.OutCubic
        }
    }

    T.Overlay.modal: Rectangle {
        color: "#8c000000"
    }

    background: Rectangle {
        radius: 16
        color: "white"
    }

    contentItem: AlertContent {
        title: root.title
        message: root.message
        acceptText: root.acceptText
        declineText: root.declineText
        canBeDeclined: root.canBeDeclined
        isLow: root.parent.height < 400
        onAccepted: root.accept()
        onDeclined: root.reject()
    }
}
