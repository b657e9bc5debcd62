import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    Column {
        anchors.centerIn: parent
        spacing: 25
        Secret {}
        Open {}
        SecretText {}
    }

    function drive(step) {
        const screen = stage.contentItem.parent
        screen.rotation = step % 2 ? 90 * (step % 4) : step * 13 % 360
        screen.scale = step % 3 ? 1 : 0.7
        screen.transformOrigin = step % 5 ? Item.Center : Item.TopLeft
    }
}
