import QtQuick
import Merovanta

// The colour that no picture may show once its masks are painted.
Rectangle {
    width: 120
    height: 30
    color: "#ff00ff"
    Merovanta.tag: 7
}
