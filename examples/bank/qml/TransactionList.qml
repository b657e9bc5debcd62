import QtQuick
import QtQuick.Controls.Basic

// Rows below a header, scrolled by touch, wheel, bar and keys.
ListView {
    id: list

    // The header grows while it is laid out; stay at its top until the customer scrolls.
    property bool scrolled: false

    function scroll(distance: real): void {
        scrolled = true;
        const last = Math.max(originY, originY + contentHeight + bottomMargin - height);
        contentY = Math.max(originY, Math.min(last, contentY + distance));
    }

    clip: true
    pixelAligned: true
    keyNavigationEnabled: false
    // The current row would have the focus in the list's place.
    currentIndex: -1
    Keys.onUpPressed: scroll(-68)
    Keys.onDownPressed: scroll(68)
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_PageUp)
            scroll(-0.9 * height);
        else if (event.key === Qt.Key_PageDown)
            scroll(0.9 * height);
        else if (event.key === Qt.Key_Home)
            scroll(originY - contentY);
        else if (event.key === Qt.Key_End)
            scroll(contentHeight);
        else
            event.accepted = false;
    }
    onMovementStarted: scrolled = true
    onOriginYChanged: {
        if (!scrolled)
            contentY = originY;
    }

    ScrollBar.vertical: ScrollBar {
        width: 6
    }

    FocusKeeper {
        view: list
    }

    // Where the keyboard stops to scroll. The list itself would hand it on to the row that had it last.
    Rectangle {
        readonly property bool showsFocus: activeFocus

        objectName: list.objectName + "Keys"
        parent: list
        anchors.fill: parent
        anchors.margins: 2
        z: 1
        activeFocusOnTab: true
        radius: Theme.radius
        color: "transparent"
        border.width: showsFocus ? 2 : 0
        border.color: Theme.accent
    }
}
