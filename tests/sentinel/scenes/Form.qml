import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "parts"

Stage {
    header: ToolBar { Label { text: "Payment"; anchors.centerIn: parent } }
    footer: TabBar { TabButton { text: "Home" } TabButton { text: "Pay" } }
    ScrollView {
        id: scroller
        anchors.fill: parent
        contentWidth: availableWidth
        ColumnLayout {
            width: scroller.availableWidth
            Repeater {
                model: 12
                GroupBox {
                    title: "Card " + index
                    Layout.fillWidth: true
                    Layout.margins: 8
                    RowLayout { SecretField { Layout.fillWidth: true } Open {} }
                }
            }
        }
    }

    function drive(step) { scroller.contentItem.contentY = step * 37 % 700 }
}
