import QtQuick

// A white card on the page's ground.
Rectangle {
    color: Theme.surface
    radius: Theme.radius
    border.color: Theme.line
}
