import QtQuick

// A tab at the left edge of what it opens and closes.
WidgetButton {
    id: root

    property real borderWidth
    property color borderColor

    implicitWidth: 44
    implicitHeight: 56
    focusRadius: height / 2 - 3

    background: LeftRounded {
        radius: 50
        color: Qt.rgba(0.1882352941, 0.1882352941, 0.1882352941, 1)
        border.width: root.borderWidth
        border.color: root.borderColor
    }
}
