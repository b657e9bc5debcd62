import QtQuick
import QtQuick.Templates as T

// The whole window where that is small, a sheet in its middle where there is room.
T.Dialog {
    id: root

    // In pixels; 0 if the document is no picture.
    property real pictureWidth
    // The height of each page for a width of one.
    property var pages: []
    property string imageSource
    property var lines: null
    property bool isCut
    property bool isLoaded
    // Whether another program can show it.
    property bool canBeOpened
    readonly property bool isWhole: parent.width < 600 || parent.height < 500

    signal openWanted

    objectName: "documentPreview"
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: isWhole ? parent.width : Math.min(900, parent.width - 64)
    height: isWhole ? parent.height : parent.height - 64
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 150
        }
    }

    // The second tap of a double tap on the close button must not reach what is behind.
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: 400
            easing.type: Easing.OutCubic
        }
    }

    T.Overlay.modal: Rectangle {
        color: "#8c000000"
    }

    background: Rectangle {
        radius: root.isWhole ? 0 : 16
        color: "white"
    }

    contentItem: FocusScope {
        focus: true

        Text {
            id: heading

            objectName: "documentTitle"
            x: 24
            width: parent.width - x - closeButton.width - 16
            height: 56
            verticalAlignment: Text.AlignVCenter
            text: root.title
            textFormat: Text.PlainText
            font.pixelSize: 17
            font.weight: Font.DemiBold
            color: "#1c2430"
            elide: Text.ElideMiddle
            maximumLineCount: 1
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        PreviewCloseButton {
            id: closeButton

            objectName: "closePreview"
            x: parent.width - width - 4
            y: 4
            onClicked: root.close()
        }

        Rectangle {
            y: heading.height
            width: parent.width
            height: parent.height - y - (root.isWhole ? 0 : 16)
            color: "#eef0f4"

            Loader {
                anchors.fill: parent
                focus: true
                active: root.isLoaded
                sourceComponent: root.pages.length > 0 ? pagesComponent : root.lines ? linesComponent : nothingComponent
            }

            Text {
                anchors.centerIn: parent
                visible: !root.isLoaded
                text: qsTr("Loading…")
                font.pixelSize: 16
                color: "#3c4656"
            }
        }
    }

    Component {
        id: pagesComponent

        PreviewPages {
            pages: root.pages
            imageSource: root.imageSource
            pictureWidth: root.pictureWidth
            isCut: root.isCut
        }
    }

    Component {
        id: linesComponent

        PreviewLines {
            model: root.lines
            isCut: root.isCut
        }
    }

    Component {
        id: nothingComponent

        PreviewNothing {
            canBeOpened: root.canBeOpened
            onOpenWanted: root.openWanted()
        }
    }
}
