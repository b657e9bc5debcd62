import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Flickable {
        id: area
        anchors { fill: parent; margins: 20; bottomMargin: 60 }
        contentWidth: 700
        contentHeight: 1500
        Repeater {
            model: 60
            Item {
                x: index % 4 * 170
                y: Math.floor(index / 4) * 95 + 12
                Open { y: -10 }
                Secret { x: 5; y: 20 }
            }
        }
    }

    function drive(step) {
        if (step % 4 == 0) area.flick(step % 8 ? 900 : -1200, step % 8 ? 2500 : -3000)
    }
}
