import QtQuick
import QtQuick.Shapes

Item {
    id: spinner

    property color color: Theme.accentText

    implicitWidth: 24
    implicitHeight: 24
    Accessible.role: Accessible.Animation
    Accessible.name: qsTr("Please wait")

    Shape {
        anchors.fill: parent
        layer.enabled: true
        layer.samples: 4

        ShapePath {
            strokeColor: spinner.color
            strokeWidth: 2.5
            fillColor: "transparent"
            capStyle: ShapePath.RoundCap

            PathAngleArc {
                centerX: 12
                centerY: 12
                radiusX: 9
                radiusY: 9
                startAngle: 0
                sweepAngle: 260
            }
        }

        RotationAnimation on rotation {
            running: spinner.visible
            loops: Animation.Infinite
            from: 0
            to: 360
            duration: 900
        }
    }
}
