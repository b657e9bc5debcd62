import QtQuick
import QtQuick.Templates as T

// Scrolls by touch, wheel, bar and keys.
ListView {
    id: root

    property bool isCut

    function scroll(distance: real): void {
        contentY = Math.max(originY, Math.min(originY + contentHeight - height, contentY + distance));
    }

    focus: true
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    Keys.onUpPressed: scroll(-60)
    Keys.onDownPressed: scroll(60)
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_PageUp) scroll(-0.9 * height);
        else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_Space) scroll(0.9 * height);
        else if (event.key === Qt.Key_Home) positionViewAtBeginning();
        else if (event.key === Qt.Key_End) positionViewAtEnd();
        else event.accepted = false;
    }

    footer: Text {
        width: root.width
        height: root.isCut ? 48 : 0
        visible: root.isCut
        text: qsTr("Only the beginning is shown.")
        font.pixelSize: 14
        color: "#3c4656"
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    T.ScrollBar.vertical: T.ScrollBar {
        width: 12
        padding: 3
        minimumSize: 0.05
        visible: size < 1

        contentItem: Rectangle {
            radius: width / 2
            color: "#9aa2b1"
        }
    }
}
