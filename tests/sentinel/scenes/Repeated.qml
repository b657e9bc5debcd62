import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    property int rows: 3
    Row {
        x: 12; y: 8
        spacing: 4
        Repeater {
            model: stage.rows
            Column {
                spacing: 5
                topPadding: index * 13
                Repeater { model: 4; Item { implicitWidth: 70; implicitHeight: 40; Secret { x: 5; y: 8; width: 50 } } }
                Open {}
            }
        }
    }

    function drive(step) { rows = 1 + step % 4 }
}
