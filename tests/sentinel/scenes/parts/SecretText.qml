import QtQuick
import Merovanta

Text {
    text: "Balance 12 345.67"
    color: "#ff00ff"
    font { pixelSize: 20; bold: true }
    Merovanta.tag: 7
    Merovanta.masked: naming.mark
}
