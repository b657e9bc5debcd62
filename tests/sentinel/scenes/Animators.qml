import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    id: stage
    Open { x: 200; y: 300 }
    Rectangle {
        id: card
        x: 20; y: 40; width: 160; height: 90; color: "lightyellow"
        Secret { id: number; x: 20; y: 30 }
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
