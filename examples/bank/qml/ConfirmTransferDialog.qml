import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import QtQuick.Layouts

// A sheet from the bottom edge; nothing is sent before it is accepted.
Dialog {
    id: dialog

    required property string recipient
    required property string cardNumber
    required property real amount
    required property string accountName

    property bool wasAccepted: false
    // Comes after the sheet has gone.
    signal confirmed

    onAboutToShow: wasAccepted = false
    onAccepted: wasAccepted = true
    onClosed: {
        if (wasAccepted)
            confirmed();
    }

    readonly property real restingY: parent ? parent.height - height : 0

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    width: parent ? Math.min(parent.width, Theme.column + 2 * Theme.margin) : 0
    y: restingY
    padding: 24
    bottomPadding: 32
    modal: true
    focus: true
    dim: true
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside

    enter: Transition {
        NumberAnimation { property: "y"; from: dialog.restingY + dialog.height; to: dialog.restingY; duration: Theme.calm; easing.type: Easing.OutCubic }
    }
    exit: Transition {
        NumberAnimation { property: "y"; to: dialog.restingY + dialog.height; duration: 200; easing.type: Easing.InCubic }
    }

    T.Overlay.modal: Rectangle {
        color: "#8c0b1f19"

        Behavior on opacity {
            NumberAnimation { duration: Theme.calm }
        }
    }

    background: Rectangle {
        color: Theme.surface
        radius: 24

        Rectangle {
            width: parent.width
            height: 24
            anchors.bottom: parent.bottom
            color: parent.color
        }
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 10
            width: 40
            height: 4
            radius: 2
            color: Theme.line
        }
    }

    contentItem: ColumnLayout {
        objectName: "confirmTransferDialog"
        spacing: 0

        Text {
            Layout.topMargin: 8
            Layout.alignment: Qt.AlignHCenter
            text: qsTr("You are sending")
            color: Theme.inkSoft
            font.pixelSize: Theme.label
        }
        PrivateText {
            Layout.topMargin: 4
            Layout.alignment: Qt.AlignHCenter
            text: Ledger.money(dialog.amount)
            viewTag: Privacy.confirmedAmount
            font.pixelSize: Theme.display
            font.weight: Font.Bold
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.topMargin: 20
            implicitHeight: children[0].implicitHeight + 32
            radius: Theme.radius
            color: Theme.background

            ColumnLayout {
                x: 16
                y: 16
                width: parent.width - 32
                spacing: 12

                DetailRow {
                    Layout.fillWidth: true
                    label: qsTr("To")
                    value: dialog.recipient
                    isPrivate: true
                }
                DetailRow {
                    Layout.fillWidth: true
                    label: qsTr("Card")
                    value: dialog.cardNumber
                    isPrivate: true
                    viewTag: Privacy.confirmedCardNumber
                }
                DetailRow {
                    Layout.fillWidth: true
                    label: qsTr("From")
                    value: dialog.accountName
                }
                DetailRow {
                    Layout.fillWidth: true
                    label: qsTr("Arrives")
                    value: qsTr("Within seconds")
                }
            }
        }

        PrimaryButton {
            objectName: "confirmButton"
            Layout.fillWidth: true
            Layout.topMargin: 24
            text: qsTr("Send now")
            focus: true
            onClicked: dialog.accept()
        }
        SecondaryButton {
            objectName: "cancelButton"
            Layout.fillWidth: true
            Layout.topMargin: 10
            text: qsTr("Not yet")
            onClicked: dialog.reject()
        }
    }
}
