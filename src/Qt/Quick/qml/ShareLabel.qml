import QtQuick

// A status, or a code to read out: large digits, each in a cell of the same width.
Item {
    id: root

    property string text
    property real maximumWidth: 200
    readonly property bool isCode: /^[0-9]{1,8}$/.test(text)

    implicitWidth: isCode ? digits.width : status.width
    implicitHeight: Math.max(40, isCode ? digits.height : status.height)
    Accessible.role: Accessible.StaticText
    Accessible.name: isCode ? text.split("").join(" ") : text

    FontMetrics {
        id: metrics
        font.pixelSize: 30
        font.weight: Font.DemiBold
    }

    Row {
        id: digits

        anchors.centerIn: parent
        spacing: 3
        visible: root.isCode

        Repeater {
            model: root.isCode ? root.text.length : 0

            Text {
                required property int index

                width: Math.ceil(metrics.advanceWidth("0"))
                horizontalAlignment: Text.AlignHCenter
                text: root.text[index]
                textFormat: Text.PlainText
                font: metrics.font
                color: "white"
            }
        }
    }

    Text {
        id: status

        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.maximumWidth)
        visible: !root.isCode
        text: root.isCode ? "" : root.text
        textFormat: Text.PlainText
        font.pixelSize: 15
        font.weight: Font.DemiBold
        color: "white"
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        maximumLineCount: 3
        elide: Text.ElideRight
    }
}
