pragma Singleton

import QtQuick

QtObject {
    readonly property SystemPalette system: SystemPalette {}
    readonly property bool dark: system.window.hslLightness < 0.5

    readonly property color background: dark ? "#101614" : "#f4f5f1"
    readonly property color surface: dark ? "#1a2320" : "#ffffff"
    readonly property color pressed: dark ? "#22302b" : "#eef3ee"
    // Opaque to the eye only: the software backend leaves old pixels beside an opaque bar when rows slide
    // under it.
    readonly property color bar: dark ? "#fe1a2320" : "#feffffff"
    // Between things; what is a control of its own has the other.
    readonly property color line: dark ? "#2c3733" : "#e2e6e0"
    readonly property color control: dark ? "#7d8c85" : "#79857e"
    readonly property color ink: dark ? "#e9efeb" : "#14231d"
    readonly property color inkSoft: dark ? "#a9b7b0" : "#55645d"
    readonly property color inkFaint: dark ? "#93a29b" : "#616e67"
    readonly property color accent: dark ? "#4cc3a0" : "#0d6650"
    readonly property color accentPressed: dark ? "#7ad9bd" : "#084a3a"
    readonly property color accentSoft: dark ? "#17392f" : "#e1efe8"
    readonly property color accentText: dark ? "#06231b" : "#ffffff"
    readonly property color positive: dark ? "#58cf9a" : "#0d7a4f"
    readonly property color danger: dark ? "#ff8a7d" : "#b3362d"
    readonly property color dangerSoft: dark ? "#3d1f1c" : "#fbebe8"
    // A ground that is dark in either theme, what stands on it, and buttons there.
    readonly property color deep: dark ? "#0f4a3c" : "#0b3b30"
    readonly property color deepControl: dark ? "#1d5d4c" : "#1a5041"
    readonly property color deepInk: "#ffffff"
    readonly property color deepText: "#b9d6ca"
    // The customer's card is made of plastic; the theme does not reach it.
    readonly property color cardLight: "#1a7f66"
    readonly property color cardDark: "#08352b"
    readonly property color frozenLight: "#5b6b64"
    readonly property color frozenDark: "#3d4b45"
    readonly property color cardPaper: "#e8ece6"
    readonly property color cardInk: "#14231d"

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
    // What is read does not grow with the window for ever.
    readonly property int column: 480

    readonly property int quick: 120
    readonly property int calm: 260

    // Where a column stands that has this width to itself, and how wide it is.
    function columnWidth(room: real): real {
        return Math.min(room - 2 * margin, column);
    }

    function columnX(room: real): real {
        return Math.round((room - columnWidth(room)) / 2);
    }
}
