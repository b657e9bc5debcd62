import QtQuick
import QtQuick.Shapes

// The bank's mark: an alder leaf over the brook.
Item {
    id: logo

    property real size: 56
    property color ground: Theme.accent
    property color mark: Theme.accentText

    implicitWidth: size
    implicitHeight: size
    layer.enabled: true
    layer.samples: 4

    Shape {
        width: 56
        height: 56
        scale: logo.size / 56
        transformOrigin: Item.TopLeft

        ShapePath {
            fillColor: logo.ground
            strokeColor: "transparent"
            PathSvg {
                path: "M17 0 H39 A17 17 0 0 1 56 17 V39 A17 17 0 0 1 39 56 H17 A17 17 0 0 1 0 39 V17 A17 17 0 0 1 17 0 Z"
            }
        }
        ShapePath {
            fillColor: logo.mark
            strokeColor: "transparent"
            PathSvg {
                path: "M28 9 C37 14 40 21 36.5 28 C34.5 32 31.5 33.5 28 34 C24.5 33.5 21.5 32 19.5 28 C16 21 19 14 28 9 Z"
            }
        }
        ShapePath {
            fillColor: "transparent"
            strokeColor: logo.ground
            strokeWidth: 2
            capStyle: ShapePath.RoundCap
            PathSvg {
                path: "M28 16 V34 M28 23 L32.5 19 M28 28 L23.5 24"
            }
        }
        ShapePath {
            fillColor: "transparent"
            strokeColor: logo.mark
            strokeWidth: 3
            capStyle: ShapePath.RoundCap
            PathSvg {
                path: "M13 40 C18 36.5 23 36.5 28 40 C33 43.5 38 43.5 43 40 M18 47.5 C21.5 45 24.5 45 28 47.5 C31.5 50 34.5 50 38 47.5"
            }
        }
    }
}
