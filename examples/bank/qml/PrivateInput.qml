import QtQuick
import Merovanta

// Input that must not leave the device when the service names its type or its tag.
TextEntry {
    property int viewTag: 0

    Merovanta.tag: viewTag

    background: Rectangle {
        visible: Privacy.sentinel
        color: Privacy.sentinelColor
    }
}
