import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// An icon, a title with a line below it, and whatever stands at the end.
ItemDelegate {
    id: row

    required property string title
    property string detail: ""
    property string iconName: ""
    property color iconColor: Theme.accent
    property bool separated: false
    // Whether a press does anything that no control at its end does.
    property bool acts: true
    default property alias trailing: end.data

    implicitHeight: 68
    leftPadding: 16
    rightPadding: 16
    topPadding: 0
    bottomPadding: 0
    hoverEnabled: true
    focusPolicy: acts ? Qt.StrongFocus : Qt.NoFocus
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.name: detail === "" ? title : title + ", " + detail

    background: Rectangle {
        color: row.down ? Theme.pressed : "transparent"
        radius: Theme.radius
        border.width: row.visualFocus ? 2 : 0
        border.color: Theme.accent

        Rectangle {
            visible: row.separated
            x: 72
            width: parent.width - x - 16
            height: 1
            color: Theme.line
        }
    }

    // Made at once, for the alias needs the id of what is in it.
    contentItem: RowLayout { // qmllint disable deferred-property-id
        spacing: 14

        Rectangle {
            visible: row.iconName !== ""
            implicitWidth: 42
            implicitHeight: 42
            radius: 21
            color: Theme.accentSoft

            Icon {
                anchors.centerIn: parent
                name: row.iconName
                color: row.iconColor
                size: 21
            }
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            Text {
                Layout.fillWidth: true
                text: row.title
                color: Theme.ink
                elide: Text.ElideRight
                font.pixelSize: Theme.body
                font.weight: Font.Medium
            }
            Text {
                Layout.fillWidth: true
                visible: row.detail !== ""
                text: row.detail
                color: Theme.inkSoft
                elide: Text.ElideRight
                font.pixelSize: Theme.caption
            }
        }

        RowLayout {
            id: end
            spacing: 8
        }
    }
}
