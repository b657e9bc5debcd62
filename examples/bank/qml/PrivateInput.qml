import QtQuick
import Merovanta

// Input that must not leave the device; the same rules as for PrivateLabel.
TextEntry {
    property int viewTag: 0

    Merovanta.tag: viewTag

    background: Rectangle {
        visible: Privacy.sentinel
        color: Privacy.sentinelColor
    }
}
