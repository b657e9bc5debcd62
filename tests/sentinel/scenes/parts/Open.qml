import QtQuick

// What everybody may see.
Rectangle {
    implicitWidth: 60
    implicitHeight: 24
    color: "#00c000"
}
