import QtQuick
import QtQuick.Controls
import "parts"

// The window's own content is moved and turned.
Stage {
    id: stage
    Column {
        x: 30; y: 120
        spacing: 20
        Open {}
        Secret {}
        SecretField {}
        SecretText {}
    }
    SequentialAnimation {
        id: shake
        NumberAnimation { target: stage.contentItem.parent; property: "x"; to: 14; duration: 40 }
        NumberAnimation { target: stage.contentItem.parent; property: "x"; to: -14; duration: 60 }
        NumberAnimation { target: stage.contentItem.parent; property: "x"; to: 0; duration: 40 }
    }

    function drive(step) {
        const screen = stage.contentItem.parent
        if (step % 6 == 0) shake.restart()
        screen.y = -(step * 23 % 90)
        screen.rotation = step % 4 < 2 ? 0 : step % 2 ? 90 * (step % 4) : step * 13 % 360
        screen.scale = step % 3 ? 1 : 0.7
        screen.transformOrigin = step % 5 ? Item.Center : Item.TopLeft
    }
}
