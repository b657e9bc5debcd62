import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "parts"

// In a window that is resized.
Stage {
    id: stage
    ColumnLayout {
        anchors { fill: parent; margins: 13 }
        spacing: 7
        Label { id: hint; text: "Your account"; font.pixelSize: 18 }
        Secret { Layout.fillWidth: true; Layout.fillHeight: true }
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
    }
    Secret { anchors { right: parent.right; verticalCenter: parent.verticalCenter } width: parent.width * 0.4 }

    function drive(step) {
        hint.visible = step % 2 == 0
        hint.font.pixelSize = 18 + step % 5
        width = 220 + step * 37 % 130
        height = 300 + step * 23 % 140
    }
}
