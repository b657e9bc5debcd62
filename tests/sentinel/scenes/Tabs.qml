import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "parts"

Stage {
    header: TabBar { id: bar; Repeater { model: 3; TabButton { text: index } } }
    StackLayout {
        anchors.fill: parent
        currentIndex: bar.currentIndex
        Item { Open {} Secret { x: 30; y: 40 } }
        ScrollView { contentHeight: 900; Column { padding: 20; spacing: 60; Repeater { model: 8; Secret {} } Open {} } }
        Page { Open {} Frame { x: 20; y: 90; SecretField {} } }
    }

    function drive(step) { bar.currentIndex = step % 3 }
}
