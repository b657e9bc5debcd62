import QtQuick
import QtQuick.Shapes

// A line icon drawn on a 24 by 24 grid.
Item {
    id: icon

    required property string name
    property color color: Theme.ink
    property real size: 24
    property real thickness: 1.7

    readonly property var paths: ({
        accounts: "M4 10 L12 4 L20 10 M5.5 10 V18.5 M10 10 V18.5 M14 10 V18.5 M18.5 10 V18.5 M3.5 20.5 H20.5 M3.5 10 H20.5",
        send: "M4 12 L20.5 4 L14.5 20.5 L11.3 13.2 Z M11.3 13.2 L20.5 4",
        card: "M5 5.5 H19 A2 2 0 0 1 21 7.5 V16.5 A2 2 0 0 1 19 18.5 H5 A2 2 0 0 1 3 16.5 V7.5 A2 2 0 0 1 5 5.5 Z M3 9.8 H21 M6.5 15 H10",
        person: "M12 4 A4 4 0 0 1 12 12 A4 4 0 0 1 12 4 Z M4.5 20.5 C4.5 16.8 7.8 14.8 12 14.8 C16.2 14.8 19.5 16.8 19.5 20.5",
        back: "M15 4.5 L7.5 12 L15 19.5",
        chevron: "M9.5 5.5 L16 12 L9.5 18.5",
        check: "M4.5 12.5 L10 18 L19.5 7",
        wallet: "M5 6 H18 A1.5 1.5 0 0 1 19.5 7.5 V9 M5 6 A2 2 0 0 0 3.5 7.8 V17 A2 2 0 0 0 5.5 19 H18.5 A2 2 0 0 0 20.5 17 V11 A2 2 0 0 0 18.5 9 H5.5 A2 2 0 0 1 3.5 7.5 M16.2 14 H16.6",
        leaf: "M5 19 C5 9 10 5 20 4.5 C20.5 14 16 19 8.5 18 M5 20.5 C7 15.5 10 12.5 14.5 10.5",
        house: "M4 11 L12 4 L20 11 M6 9.5 V20 H18 V9.5 M10 20 V14.5 H14 V20",
        cup: "M5 8.5 H16.5 V14 A4.5 4.5 0 0 1 12 18.5 H9.5 A4.5 4.5 0 0 1 5 14 Z M16.5 10 H18 A2.2 2.2 0 0 1 18 14.4 H16.5 M8.5 5.5 V4 M12.5 5.5 V4",
        basket: "M3.5 10 H20.5 L18.8 19 H5.2 Z M7.5 10 L10.5 4.5 M16.5 10 L13.5 4.5 M9.5 13 V16 M14.5 13 V16",
        tram: "M7 4.5 H17 A1.5 1.5 0 0 1 18.5 6 V15 A2 2 0 0 1 16.5 17 H7.5 A2 2 0 0 1 5.5 15 V6 A1.5 1.5 0 0 1 7 4.5 Z M5.5 11.5 H18.5 M8.5 14.3 H9 M15 14.3 H15.5 M8 17 L6 20 M16 17 L18 20",
        bolt: "M13.5 3.5 L6 13.5 H11.5 L10.5 20.5 L18 10.5 H12.5 Z",
        briefcase: "M5 8 H19 A1.5 1.5 0 0 1 20.5 9.5 V17.5 A1.5 1.5 0 0 1 19 19 H5 A1.5 1.5 0 0 1 3.5 17.5 V9.5 A1.5 1.5 0 0 1 5 8 Z M9 8 V5.5 H15 V8 M3.5 13 H20.5",
        drop: "M12 3.8 C15.5 8 18 11 18 14.5 A6 6 0 0 1 6 14.5 C6 11 8.5 8 12 3.8 Z",
        book: "M5 5.5 A2 2 0 0 1 7 4 H19 V17.5 H7 A2 2 0 0 0 5 19.2 Z M5 19.2 A2 2 0 0 0 7 20.5 H19 V17.5",
        cross: "M9.5 4.5 H14.5 V9.5 H19.5 V14.5 H14.5 V19.5 H9.5 V14.5 H4.5 V9.5 H9.5 Z",
        lock: "M6.5 10.5 H17.5 A1 1 0 0 1 18.5 11.5 V19 A1 1 0 0 1 17.5 20 H6.5 A1 1 0 0 1 5.5 19 V11.5 A1 1 0 0 1 6.5 10.5 Z M8.3 10.5 V8 A3.7 3.7 0 0 1 15.7 8 V10.5",
        snow: "M12 3.5 V20.5 M4.6 7.8 L19.4 16.2 M19.4 7.8 L4.6 16.2 M9.8 5 L12 7 L14.2 5 M9.8 19 L12 17 L14.2 19",
        wave: "M8 9 A5 5 0 0 1 8 15 M11.5 6.8 A8.6 8.6 0 0 1 11.5 17.2 M15 4.6 A12 12 0 0 1 15 19.4",
        globe: "M12 3.5 A8.5 8.5 0 0 1 12 20.5 A8.5 8.5 0 0 1 12 3.5 Z M3.5 12 H20.5 M12 3.5 C8 8 8 16 12 20.5 M12 3.5 C16 8 16 16 12 20.5",
        help: "M12 3.5 A8.5 8.5 0 0 1 12 20.5 A8.5 8.5 0 0 1 12 3.5 Z M9.6 9.8 A2.4 2.4 0 1 1 12.7 12 C12.1 12.4 12 12.9 12 13.7 M12 16.4 V16.6",
        chat: "M5 5 H19 A1.5 1.5 0 0 1 20.5 6.5 V15 A1.5 1.5 0 0 1 19 16.5 H11 L6.5 20.5 V16.5 H5 A1.5 1.5 0 0 1 3.5 15 V6.5 A1.5 1.5 0 0 1 5 5 Z M8 9.3 H16 M8 12.5 H13",
        bell: "M6 16.5 V11 A6 6 0 0 1 18 11 V16.5 L19.5 18 H4.5 Z M10 20.8 H14",
        finger: "M6 17 C6.8 14 6.3 12.4 6.8 10.4 A5.4 5.4 0 0 1 17.4 11.6 C17.5 14.5 17.2 16.5 16.6 18.7 M9.5 19.5 C10.6 16.5 9.6 14 10 11.6 A2.2 2.2 0 0 1 14.2 12 C14.4 15 13.8 17.6 13 20.3",
        screen: "M5 4.5 H19 A1.5 1.5 0 0 1 20.5 6 V15 A1.5 1.5 0 0 1 19 16.5 H5 A1.5 1.5 0 0 1 3.5 15 V6 A1.5 1.5 0 0 1 5 4.5 Z M12 16.5 V20 M8 20 H16",
        mail: "M5 5.5 H19 A1.5 1.5 0 0 1 20.5 7 V17 A1.5 1.5 0 0 1 19 18.5 H5 A1.5 1.5 0 0 1 3.5 17 V7 A1.5 1.5 0 0 1 5 5.5 Z M4 6.5 L12 13 L20 6.5",
        phone: "M8.5 3.5 H15.5 A1.5 1.5 0 0 1 17 5 V19 A1.5 1.5 0 0 1 15.5 20.5 H8.5 A1.5 1.5 0 0 1 7 19 V5 A1.5 1.5 0 0 1 8.5 3.5 Z M11.3 17.8 H12.7",
        alert: "M12 4 L21 19.5 H3 Z M12 10 V14 M12 16.6 V16.8"
    })

    implicitWidth: size
    implicitHeight: size
    // A shape alone is drawn outside its clip by the software backend.
    // That one draws layers only where a point is one pixel.
    layer.enabled: GraphicsInfo.api !== GraphicsInfo.Software || Screen.devicePixelRatio === 1
    layer.samples: 4

    Shape {
        width: 24
        height: 24
        scale: icon.size / 24
        transformOrigin: Item.TopLeft

        ShapePath {
            strokeColor: icon.color
            strokeWidth: icon.thickness
            fillColor: "transparent"
            capStyle: ShapePath.RoundCap
            joinStyle: ShapePath.RoundJoin

            PathSvg {
                path: icon.paths[icon.name] ?? ""
            }
        }
    }
}
