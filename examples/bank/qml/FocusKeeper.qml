import QtQuick

// Scrolls a view to what the keyboard has come to.
Item {
    id: keeper

    required property Flickable view
    readonly property Item focused: Window.activeFocusItem
    // Around it, so that its ring and the next thing are seen.
    readonly property real room: 24

    function reveal(): void {
        if (focused === null || !isInView(focused))
            return;
        const top = focused.mapToItem(view.contentItem, 0, 0).y - room;
        const bottom = top + focused.height + 2 * room;
        const last = Math.max(view.originY, view.originY + view.contentHeight + view.bottomMargin - view.height);
        if (top < view.contentY || bottom - top > view.height)
            view.contentY = Math.max(view.originY, top);
        else if (bottom > view.contentY + view.height)
            view.contentY = Math.min(last, bottom - view.height);
    }

    function isInView(item: Item): bool {
        while (item !== null && item !== view.contentItem)
            item = item.parent;
        return item !== null;
    }

    onFocusedChanged: soon.restart()

    // Once everything has its place.
    Timer {
        id: soon
        interval: 0
        onTriggered: keeper.reveal()
    }

    Connections {
        target: keeper.view

        function onHeightChanged(): void {
            soon.restart();
        }
    }
}
