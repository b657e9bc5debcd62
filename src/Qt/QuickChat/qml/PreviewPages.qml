import QtQuick

// Pages one below the other, or one picture that is seen whole.
PreviewList {
    id: root

    required property var pages
    required property string imageSource
    // 0 if it is no picture.
    required property real pictureWidth
    readonly property bool isPicture: pictureWidth > 0

    readonly property real margin: width < 600 ? 8 : 16
    readonly property real room: width - 2 * margin
    readonly property real wholeWidth: isPicture ? Math.min(pictureWidth, room, (height - 2 * margin) / pages[0]) : room

    model: pages
    spacing: margin
    header: Item {
        height: root.isPicture ? (root.height - root.wholeWidth * root.pages[0]) / 2 : root.margin
    }

    delegate: Item {
        id: page

        required property int index
        required property real modelData

        width: root.width
        height: image.height + (index === root.count - 1 ? root.margin : 0)

        Image {
            id: image

            objectName: "page"
            anchors.horizontalCenter: parent.horizontalCenter
            width: root.wholeWidth
            height: width * page.modelData
            asynchronous: true
            cache: false
            source: root.imageSource + page.index
            // In steps, so that a window that is being resized does not have every width drawn.
            sourceSize.width: Math.ceil(width * Screen.devicePixelRatio / 128) * 128
            Accessible.role: Accessible.Graphic
            Accessible.name: root.isPicture ? qsTr("Picture") : qsTr("Page %1 of %2").arg(page.index + 1).arg(root.count)

            Rectangle {
                anchors.fill: parent
                z: -1
                color: "white"
                visible: !root.isPicture
            }

            Text {
                anchors.centerIn: parent
                visible: image.status === Image.Error
                text: qsTr("This page cannot be shown.")
                font.pixelSize: 16
                color: "#3c4656"
            }
        }
    }
}
