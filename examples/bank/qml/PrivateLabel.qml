import QtQuick
import QtQuick.Controls.Basic
import Merovanta

// Text that must not leave the device. It paints nothing outside its rectangle and stands at the origin of
// its parent, so that the masking rectangle covers it exactly. Out of sight it shrinks to nothing: its mask
// would cover what is shown in its place.
Label {
    property int viewTag: 0

    width: parent && visible ? parent.width : 0
    height: parent && visible ? parent.height : 0
    clip: true
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
    Merovanta.tag: viewTag

    background: Rectangle {
        visible: Privacy.sentinel
        color: Privacy.sentinelColor
    }
}
