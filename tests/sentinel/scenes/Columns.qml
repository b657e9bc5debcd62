import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "parts"

Stage {
    ColumnLayout {
        anchors { fill: parent; margins: 13 }
        spacing: 7
        Label { id: hint; text: "Your account"; font.pixelSize: 18 }
        Secret { Layout.fillWidth: true }
        RowLayout {
            Open {}
            Secret { Layout.fillWidth: true; Layout.leftMargin: 11 }
            Open {}
        }
        SecretText { Layout.alignment: Qt.AlignRight }
        Column {
            spacing: 3.5
            Repeater { model: 3; SecretField {} }
        }
        Item { Layout.fillHeight: true }
    }

    function drive(step) {
        hint.visible = step % 2 == 0
        hint.font.pixelSize = 18 + step % 5
    }
}
