import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Open { x: 200; y: 300 }
    Drawer {
        id: side
        width: 180; height: 400
        Column { padding: 12; spacing: 9; SecretText {} Secret {} Open {} }
    }
    Drawer {
        id: bottom
        edge: Qt.BottomEdge
        width: 300; height: 140
        Secret { x: 50; y: 40 }
    }

    function drive(step) {
        if (step % 6 == 0) side.open()
        if (step % 6 == 3) side.close()
        if (step % 4 == 0) bottom.open()
        if (step % 4 == 2) bottom.close()
    }
}
