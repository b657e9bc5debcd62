import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Open { x: 220; y: 10 }
    // Content that is painted elsewhere than where it lies.
    Item {
        x: 10; y: 10; width: 130; height: 50
        layer.enabled: true
        layer.effect: Component { ShaderEffect { transform: Translate { id: shift; x: 60; y: 25 } } }
        Secret { x: 10; y: 10 }
    }
    Item {
        id: source
        x: 10; y: 110; width: 140; height: 50
        Secret { id: shown; x: 15; y: 10 }
    }
    ShaderEffectSource { x: 120; y: 180; width: 140; height: 50; sourceItem: source }
    ShaderEffectSource { x: 20; y: 190; width: 70; height: 90; sourceItem: source; sourceRect: Qt.rect(0, 0, 140, 50); rotation: 40; textureMirroring: ShaderEffectSource.NoMirroring }
    ShaderEffect {
        x: 10; y: 300; width: 140; height: 80
        property variant source: ShaderEffectSource { sourceItem: source; hideSource: false }
        mesh: GridMesh { resolution: Qt.size(4, 4) }
    }

    function drive(step) { shown.x = step * 19 % 60 }
}
