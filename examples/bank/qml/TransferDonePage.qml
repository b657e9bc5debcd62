import QtQuick
import QtQuick.Layouts

FocusScope {
    id: page

    required property string recipient
    required property real amount
    signal done

    objectName: "transferDonePage"
    Keys.onEscapePressed: done()

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    ColumnLayout {
        anchors.centerIn: parent
        anchors.verticalCenterOffset: -60
        width: Theme.columnWidth(parent.width)
        spacing: 0

        Rectangle {
            id: seal
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: 96
            implicitHeight: 96
            radius: 48
            color: Theme.accent

            NumberAnimation on scale {
                from: 0.4
                to: 1
                duration: 420
                easing.type: Easing.OutBack
            }

            Icon {
                anchors.centerIn: parent
                name: "check"
                color: Theme.accentText
                size: 44
                thickness: 2.2
            }
        }
        Text {
            Layout.topMargin: 28
            Layout.alignment: Qt.AlignHCenter
            text: qsTr("Money sent")
            color: Theme.ink
            font.pixelSize: Theme.title
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        PrivateText {
            Layout.topMargin: 8
            Layout.alignment: Qt.AlignHCenter
            text: Ledger.money(page.amount)
            viewTag: Privacy.sentAmount
            font.pixelSize: 22
            font.weight: Font.DemiBold
            color: Theme.accent
        }
        PrivateText {
            Layout.topMargin: 8
            Layout.alignment: Qt.AlignHCenter
            Layout.maximumWidth: parent.width
            text: qsTr("to %1").arg(page.recipient)
            color: Theme.inkSoft
        }
    }

    PrimaryButton {
        objectName: "doneButton"
        x: Theme.columnX(parent.width)
        y: parent.height - height - 36
        width: Theme.columnWidth(parent.width)
        text: qsTr("Done")
        focus: true
        onClicked: page.done()
    }
}
