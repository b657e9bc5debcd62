import QtQuick

// Fills what it is laid over and takes no touches but those on its buttons.
Item {
    id: root

    property alias text: widget.text
    property bool isShowButtonHidden: true
    property bool isHideButtonHidden: false
    property bool isButtonGroupHidden: false
    property bool isChatButtonHidden: true
    // The part of this item that nothing of the system covers.
    property rect safeArea: Qt.rect(0, 0, width, height)

    // A hairline that sets the widget off from dark applications.
    property real borderWidth: 1
    property color borderColor: "#30ffffff"

    readonly property real dockX: safeArea.x + safeArea.width
    readonly property real dockY: Math.round(safeArea.y + Math.max(0, (safeArea.height - widget.expandedHeight) * 0.3))
    readonly property real tabY: dockY + Math.round((widget.expandedHeight - hideButton.height) / 2)

    // Whoever collapses or expands the widget by keyboard finds the focus on the button that does the opposite.
    property bool isKeyboardUsed

    signal hideClicked
    signal closeClicked
    signal openChat

    RoundedButton {
        id: showButton

        objectName: "showButton"
        x: root.dockX - width
        y: root.tabY
        borderWidth: root.borderWidth
        borderColor: root.borderColor
        visible: !root.isShowButtonHidden
        text: qsTr("Show co-browsing")
        iconPath: "M14 6 L8 12 L14 18"
        onClicked: {
            root.isKeyboardUsed = visualFocus;
            root.hideClicked();
        }
        onVisibleChanged: if (visible && root.isKeyboardUsed) forceActiveFocus(Qt.TabFocusReason)
    }

    RoundedButton {
        id: hideButton

        objectName: "hideButton"
        x: root.dockX - width - (widget.visible ? widget.width : 0)
        y: root.tabY
        borderWidth: root.borderWidth
        borderColor: root.borderColor
        visible: !root.isHideButtonHidden
        text: qsTr("Hide co-browsing")
        iconPath: "M10 6 L16 12 L10 18"
        onClicked: {
            root.isKeyboardUsed = visualFocus;
            root.hideClicked();
        }
        onVisibleChanged: if (visible && root.isKeyboardUsed) forceActiveFocus(Qt.TabFocusReason)
    }

    CoBrowseWidget {
        id: widget

        objectName: "widget"
        x: root.dockX - width
        y: root.dockY
        visible: !root.isHideButtonHidden || !root.isButtonGroupHidden
        borderWidth: root.borderWidth
        borderColor: root.borderColor
        maximumTextWidth: Math.min(190, root.safeArea.width - hideButton.width - 36)
        buttonGroup.visible: !root.isButtonGroupHidden

        WidgetButton {
            objectName: "chatButton"
            visible: !root.isChatButtonHidden
            text: qsTr("Open chat")
            iconPath: "M4 6 Q4 4 6 4 L18 4 Q20 4 20 6 L20 14 Q20 16 18 16 L11 16 L7 20 L7 16 L6 16 Q4 16 4 14 Z M8 8.5 L16 8.5 M8 12 L13 12"
            onClicked: root.openChat()
        }

        WidgetButton {
            objectName: "closeButton"
            text: qsTr("End co-browsing")
            iconPath: "M6 6 L18 18 M18 6 L6 18"
            onClicked: root.closeClicked()
        }
    }
}
