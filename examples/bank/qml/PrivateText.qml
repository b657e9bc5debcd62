import QtQuick

// A private text for layouts: a wrapper that gives its PrivateLabel a parent of the same size.
Item {
    id: wrapper

    property alias text: label.text
    property alias font: label.font
    property alias color: label.color
    property alias horizontalAlignment: label.horizontalAlignment
    property alias viewTag: label.viewTag

    // Whole points, so that neighbours and the mask's edges fall on pixels.
    implicitWidth: Math.ceil(label.implicitWidth)
    implicitHeight: Math.ceil(label.implicitHeight)

    PrivateLabel {
        id: label
        color: Theme.ink
        font.pixelSize: Theme.body
    }
}
