import QtQuick

PreviewList {
    id: root

    topMargin: 16
    bottomMargin: 16

    delegate: Text {
        required property string display

        objectName: "line"
        x: 24
        width: root.width - 48
        text: display
        textFormat: Text.PlainText
        font.family: "monospace"
        font.pixelSize: 14
        color: "#1c2430"
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
