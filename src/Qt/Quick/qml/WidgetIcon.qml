import QtQuick

// A line drawing on a grid of 24 by 24 units.
Canvas {
    id: root

    // As in SVG.
    required property string path
    property color color: "white"

    implicitWidth: 24
    implicitHeight: 24
    onPaint: {
        const context = getContext("2d");
        context.reset();
        context.scale(width / 24, height / 24);
        context.lineWidth = 2;
        context.lineCap = "round";
        context.lineJoin = "round";
        context.strokeStyle = color;
        context.path = path;
        context.stroke();
    }
}
