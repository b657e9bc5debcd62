import QtQuick

// A rectangle whose corners at the left can be round. What is not wanted is drawn past the edges and cut off.
Item {
    id: root

    property real radius
    property bool isTopRounded: true
    property bool isBottomRounded: true
    property alias color: rectangle.color
    property alias border: rectangle.border

    clip: true

    Rectangle {
        id: rectangle

        readonly property real excess: radius + border.width

        y: root.isTopRounded ? 0 : -excess
        width: root.width + excess
        height: root.height - y + (root.isBottomRounded ? 0 : excess)
        border.width: 0
        radius: Math.min(root.radius, root.width, root.height / (root.isTopRounded && root.isBottomRounded ? 2 : 1))
    }
}
