import QtQuick
import QtQuick.Controls
import Merovanta
import "parts"

Stage {
    property bool allHidden: true
    Merovanta.tag: 7
    Merovanta.masked: naming.mark
    Rectangle { id: moved; x: 30; y: 90; width: 200; height: 100; color: "#ff00ff" }
    footer: Rectangle { height: 30; color: "#ff00ff" }

    function drive(step) { moved.x = step * 31 % 160 }
}
