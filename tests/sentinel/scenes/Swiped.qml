import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    header: TabBar { currentIndex: swipe.currentIndex; TabButton { text: "One" } TabButton { text: "Two" } TabButton { text: "Three" } }
    SwipeView {
        id: swipe
        anchors.fill: parent
        Repeater {
            model: 3
            Page {
                Open { x: 20; y: 20 }
                Secret { x: 60 + 30 * index; y: 100 + 40 * index }
                SecretText { x: 20; y: 260 }
            }
        }
    }

    function drive(step) { if (step % 3 == 0) swipe.setCurrentIndex(Math.floor(step / 3) % 3) }
}
