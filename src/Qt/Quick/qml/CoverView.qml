import QtQuick

// Fills its parent and lets nothing through to what is behind it.
FocusScope {
    // Makes this a class of its own, known by its name.
    readonly property bool isMerovantaCover: true

    signal dismissed

    anchors.fill: parent
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Escape || event.key === Qt.Key_Back)
            dismissed();
    }

    HoverHandler {
        blocking: true
        cursorShape: Qt.ArrowCursor
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        preventStealing: true
        onWheel: wheel => wheel.accepted = true
    }

    MultiPointTouchArea {
        anchors.fill: parent
        mouseEnabled: false
    }

    DropArea {
        anchors.fill: parent
    }
}
