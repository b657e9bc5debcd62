pragma Singleton

import QtQuick

QtObject {
    readonly property color background: "#f4f5f1"
    readonly property color surface: "#ffffff"
    // Opaque to the eye only: the software backend leaves old pixels beside an opaque bar when rows slide
    // under it.
    readonly property color bar: "#feffffff"
    readonly property color line: "#e2e6e0"
    readonly property color ink: "#14231d"
    readonly property color inkSoft: "#55645d"
    readonly property color inkFaint: "#6f7d76"
    readonly property color accent: "#0d6650"
    readonly property color accentPressed: "#084a3a"
    readonly property color accentSoft: "#e1efe8"
    readonly property color deep: "#0b3b30"
    readonly property color positive: "#0d7a4f"
    readonly property color danger: "#b3362d"
    readonly property color dangerSoft: "#fbebe8"
    readonly property color accentText: "#ffffff"
    readonly property color deepText: "#b9d6ca"

    // Points; the sizes of a small typographic scale.
    readonly property int display: 34
    readonly property int title: 28
    readonly property int heading: 18
    readonly property int body: 16
    readonly property int label: 14
    readonly property int caption: 13

    readonly property int margin: 20
    readonly property int radius: 16
    readonly property int fieldRadius: 12
    readonly property int controlHeight: 52
    // The strip at the top that a phone's status bar covers.
    readonly property int safeTop: 44
    readonly property int tabBarHeight: 76

    readonly property int quick: 120
    readonly property int calm: 260
}
