import QtQuick
import QtQuick.Controls.Basic
import Merovanta

// Text that must not leave the device. It paints nothing outside its rectangle and stands at the origin of
// its parent, so that the masking rectangle covers it exactly.
Label {
    property int viewTag: 0

    anchors.fill: parent
    clip: true
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
    Merovanta.tag: viewTag

    background: Rectangle {
        visible: Privacy.sentinel
        color: Privacy.sentinelColor
    }
}
