import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Open { x: 230; y: 360 }
    Item {
        anchors.centerIn: parent
        width: 160; height: 160
        RotationAnimator on rotation { from: 0; to: 360; duration: 900; loops: Animation.Infinite }
        Secret { x: 30; y: 20; width: 70 }
    }
}
