import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    Column {
        x: 25; y: 15
        spacing: 8
        Loader { id: first; active: false; sourceComponent: Row { spacing: 8; Open {} Secret {} } }
        Loader { id: second; asynchronous: true; sourceComponent: field }
        Loader { id: third; source: "parts/SecretText.qml" }
    }
    Component { id: field; SecretField {} }
    Component { id: texts; Column { Open {} SecretText { leftPadding: 20 } } }

    function drive(step) {
        first.active = step % 2 == 0
        second.sourceComponent = step % 3 ? field : texts
        third.setSource("", {})
        third.setSource(step % 3 == 1 ? "parts/Secret.qml" : "parts/SecretText.qml", { "x": step % 30 })
    }
}
