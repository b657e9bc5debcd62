import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    Column {
        x: 30; y: 120
        spacing: 20
        Open {}
        Secret {}
        SecretField {}
    }
    SequentialAnimation {
        id: shake
        NumberAnimation { target: stage.contentItem.parent; property: "x"; to: 14; duration: 40 }
        NumberAnimation { target: stage.contentItem.parent; property: "x"; to: -14; duration: 60 }
        NumberAnimation { target: stage.contentItem.parent; property: "x"; to: 0; duration: 40 }
    }

    function drive(step) {
        if (step % 6 == 0) shake.restart()
        contentItem.parent.y = -(step * 23 % 90)
    }
}
