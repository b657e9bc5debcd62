import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Open { x: 235; y: 5 }
    Item {
        x: 20; y: 20; width: 200; height: 90
        layer { enabled: true; smooth: true; textureSize: Qt.size(90, 40) }
        opacity: 0.9
        Secret { id: moved; x: 30; y: 20 }
        Open { y: 60 }
    }
    Item {
        x: 20; y: 130; width: 200; height: 80
        layer { enabled: true; sourceRect: Qt.rect(-60, -30, 320, 140) }
        Secret { x: 40; y: 20 }
    }
    Item {
        x: 20; y: 220; width: 200; height: 60
        scale: 0.8
        rotation: 12
        layer { enabled: true; textureMirroring: ShaderEffectSource.MirrorHorizontally | ShaderEffectSource.MirrorVertically }
        Secret { width: 60 }
    }
    Item {
        x: 20; y: 300; width: 240; height: 80
        layer.enabled: true
        Item {
            x: 50; width: 120; height: 70
            layer.enabled: true
            rotation: 20
            Secret { id: inner; width: 60 }
        }
    }

    function drive(step) { moved.x = step * 17 % 120; inner.y = step * 7 % 50 }
}
