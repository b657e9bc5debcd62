import QtQuick
import QtQuick.Layouts

// A name on the left, a value on the right; the value of a private row is masked.
RowLayout {
    id: row

    required property string label
    required property string value
    property bool isPrivate: false
    property int viewTag: 0

    spacing: 12

    Text {
        Layout.fillWidth: true
        text: row.label
        color: Theme.inkSoft
        font.pixelSize: Theme.label
    }
    Text {
        visible: !row.isPrivate
        text: row.value
        color: Theme.ink
        font.pixelSize: Theme.label
        font.weight: Font.Medium
    }
    PrivateText {
        visible: row.isPrivate
        text: row.isPrivate ? row.value : ""
        viewTag: row.viewTag
        font.pixelSize: Theme.label
        font.weight: Font.Medium
    }
}
