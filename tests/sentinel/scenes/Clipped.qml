import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Open { x: 230; y: 10 }
    Item {
        x: 33.3; y: 20.7; width: 150; height: 90; clip: true
        Secret { id: across; x: -30; y: 10; width: 260 }
        Open { y: 60 }
    }
    Item {
        x: 60; y: 140; width: 140; height: 140; rotation: 30; clip: true
        Secret { x: -50; y: -50; width: 240; height: 240 }
    }
    Flickable {
        id: outer
        x: 20; y: 300; width: 200; height: 80; clip: true; contentHeight: 300
        Flickable {
            id: inner
            y: 20; width: 200; height: 60; clip: true; contentWidth: 600
            Row { spacing: 8; Repeater { model: 8; Secret { width: 60 } } }
        }
    }

    function drive(step) { across.x = -80 + step * 13 % 90; outer.contentY = step * 5 % 40; inner.contentX = step * 17 % 300 }
}
