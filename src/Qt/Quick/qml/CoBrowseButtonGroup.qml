import QtQuick

Item {
    id: root

    default property alias buttons: row.data

    implicitWidth: row.width + 16
    implicitHeight: row.height + 8

    LeftRounded {
        anchors.fill: parent
        radius: 15
        isTopRounded: false
        color: "#474747"
    }

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 8
    }
}
