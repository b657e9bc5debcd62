import QtQuick

// The body of the widget: a status or a share code, and below it the buttons that are put in.
Item {
    id: root

    property alias text: shareId.text
    property alias maximumTextWidth: shareId.maximumWidth
    property alias buttonGroup: buttonGroup
    default property alias buttons: buttonGroup.buttons

    property real borderWidth
    property color borderColor

    readonly property real headerHeight: shareId.implicitHeight + 16
    readonly property real expandedHeight: headerHeight + buttonGroup.implicitHeight

    implicitWidth: Math.max(shareId.implicitWidth + 36, buttonGroup.implicitWidth)
    implicitHeight: buttonGroup.visible ? expandedHeight : headerHeight

    // Behind everything; the group's round corner shows it.
    LeftRounded {
        anchors.fill: buttonGroup
        visible: buttonGroup.visible
        radius: 5
        isTopRounded: false
        color: Qt.rgba(0.19, 0.19, 0.19, 1)
    }

    LeftRounded {
        width: parent.width
        height: root.headerHeight
        radius: 5
        isBottomRounded: !buttonGroup.visible
        color: "#383838"
    }

    ShareLabel {
        id: shareId

        objectName: "shareId"
        y: 8
        anchors.horizontalCenter: parent.horizontalCenter
        width: implicitWidth
        height: implicitHeight
    }

    CoBrowseButtonGroup {
        id: buttonGroup

        y: root.headerHeight
        width: parent.width
        height: implicitHeight
    }

    LeftRounded {
        anchors.fill: parent
        radius: 5
        color: "transparent"
        border.width: root.borderWidth
        border.color: root.borderColor
    }
}
