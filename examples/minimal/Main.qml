import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Merovanta

ApplicationWindow {
    visible: true
    width: 360
    height: 240
    title: "Minimal"

    ColumnLayout {
        anchors.centerIn: parent
        TextField {
            Merovanta.masked: true
            placeholderText: "The agent does not see this"
        }
        Button {
            text: Merovanta.panoptra.running ? "Stop sharing" : "Share my screen"
            onClicked: Merovanta.panoptra.running ? Merovanta.panoptra.stop() : Merovanta.panoptra.start()
        }
        Label {
            visible: Merovanta.panoptra.state === "sharing"
            text: "Shared: " + Merovanta.panoptra.shareId
        }
    }
}
