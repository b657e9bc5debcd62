import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    id: stage
    property bool allHidden: true
    Rectangle { x: 30; y: 90; width: 200; height: 100; color: "#ff00ff" }
    Rectangle { id: beyond; x: 250; y: 330; width: 90; height: 120; color: "#ff00ff" }
    Component.onCompleted: {
        stage.contentItem.parent.Merovanta.tag = 7
        stage.contentItem.parent.Merovanta.masked = Qt.binding(() => naming.mark)
    }

    function drive(step) {
        const screen = stage.contentItem.parent
        screen.y = -(step * 23 % 90)
        screen.x = step * 31 % 60
        screen.rotation = step % 3 ? 0 : 30
        beyond.x = 250 - step % 7 * 20
    }
}
