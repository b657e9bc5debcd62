import QtQuick
import QtQuick.Controls
import Merovanta

TextField {
    text: "4111 1111 1111 1111"
    color: "#c000c0"
    background: Rectangle { implicitWidth: 150; implicitHeight: 36; color: "#ff00ff"; border.color: "#ff00ff" }
    Merovanta.tag: 7
    Merovanta.masked: naming.mark
}
