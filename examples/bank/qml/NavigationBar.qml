import QtQuick
import QtQuick.Controls.Basic

// The bar over a page that was pushed onto the navigation stack.
Item {
    id: bar

    required property string title
    signal back

    implicitHeight: Theme.safeTop + 52

    AbstractButton {
        id: backButton
        objectName: "backButton"
        x: 8
        y: Theme.safeTop + 4
        width: 44
        height: 44
        focusPolicy: Qt.StrongFocus
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        Accessible.name: qsTr("Back")
        onClicked: bar.back()

        background: Rectangle {
            radius: 22
            color: backButton.down ? Theme.line : "transparent"
            border.width: backButton.visualFocus ? 2 : 0
            border.color: Theme.accent
        }
        contentItem: Item {
            Icon {
                anchors.centerIn: parent
                name: "back"
            }
        }
    }

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.verticalCenter: backButton.verticalCenter
        text: bar.title
        color: Theme.ink
        font.pixelSize: Theme.heading
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
