import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    Open { x: 230; y: 10 }
    Rectangle {
        id: card
        x: 20; y: 40; width: 160; height: 90; color: "lightyellow"
        Secret { id: number; x: 20; y: 30 }
    }
    Item {
        x: 120; y: 200; width: 160; height: 160
        RotationAnimator on rotation { from: 0; to: 360; duration: 900; loops: Animation.Infinite }
        Secret { x: 30; y: 20; width: 70 }
    }
    ParallelAnimation {
        id: moving
        XAnimator { target: card; from: 20; to: 120; duration: 120 }
        ScaleAnimator { target: card; from: 1; to: 0.7; duration: 120 }
        RotationAnimator { target: number; from: 0; to: 90; duration: 120 }
        OpacityAnimator { target: number; from: 0.4; to: 1; duration: 120 }
    }
    SequentialAnimation {
        id: back
        YAnimator { target: number; from: 30; to: 60; duration: 80 }
        YAnimator { target: number; from: 60; to: 30; duration: 80 }
    }

    function drive(step) {
        if (step % 8 == 0) moving.restart()
        if (step % 8 == 4) { moving.complete(); card.x = 20 + step % 7; back.restart() }
    }
}
