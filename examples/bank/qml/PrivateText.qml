import QtQuick
import QtQuick.Controls.Basic
import Merovanta

// Text that must not leave the device when the service names its type or its tag.
Label {
    property int viewTag: 0

    color: Theme.ink
    font.pixelSize: Theme.body
    Merovanta.tag: viewTag

    background: Rectangle {
        visible: Privacy.sentinel
        color: Privacy.sentinelColor
    }
}
