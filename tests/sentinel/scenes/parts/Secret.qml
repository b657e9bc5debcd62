import QtQuick
import Merovanta

Rectangle {
    implicitWidth: 110
    implicitHeight: 30
    color: "#ff00ff"
    Merovanta.tag: 7
    Merovanta.masked: naming.mark
}
