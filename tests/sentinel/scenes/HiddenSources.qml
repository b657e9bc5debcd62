import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    Open { x: 220; y: 10 }
    Item {
        visible: false
        Rectangle { id: bare; width: 80; height: 40; color: "#ff00ff"; Merovanta.tag: 7; Merovanta.masked: naming.mark }
    }
    ShaderEffectSource { id: copy; x: 30; y: 40; width: 160; height: 60; sourceItem: bare }
    Item {
        id: page
        x: 40; y: 120; width: 150; height: 60
        visible: step % 2 == 0
        property int step: 0
        Secret { x: 25; y: 10 }
    }
    ShaderEffectSource { x: 140; y: 200; width: 150; height: 60; sourceItem: page; hideSource: true; scale: 0.8 }
    Item {
        id: far
        x: 1000; y: 0; width: 100; height: 50
        Secret {}
        SecretText { y: 25 }
    }
    ShaderEffectSource {
        id: mirror
        x: 20; y: 290; width: 200; height: 100; sourceItem: far
        transform: Scale { xScale: -1; origin.x: 100 }
    }

    function drive(step) { page.step = step; copy.x = 30 + step % 5 * 9; mirror.width = 150 + step % 3 * 20 }
}
