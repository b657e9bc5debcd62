import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Shapes
import Merovanta

// The customer's card; a tap turns it over.
AbstractButton {
    id: card

    property bool turned: false
    property bool frozen: false
    // Degrees of the turn; from 90 on the back is seen.
    property real angle: turned ? 180 : 0
    readonly property bool showsBack: angle > 90
    readonly property real corner: 20

    implicitHeight: Math.round(width * 0.6)
    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.name: showsBack ? qsTr("Back of your card, tap to see the front") : qsTr("Your card, tap to see the back")
    onClicked: turned = !turned

    Behavior on angle {
        NumberAnimation { duration: 520; easing.type: Easing.InOutCubic }
    }

    // A turn seen straight from the front keeps every edge upright.
    transform: Scale {
        origin.x: card.width / 2
        xScale: Math.max(0.02, Math.abs(Math.cos(card.angle * Math.PI / 180)))
    }

    background: Shape {
        layer.enabled: true
        layer.samples: 4
        layer.smooth: true

        ShapePath {
            strokeWidth: card.visualFocus ? 3 : 0
            strokeColor: card.visualFocus ? Theme.ink : "transparent"
            startX: card.corner
            startY: 0

            fillGradient: LinearGradient {
                x1: 0
                y1: 0
                x2: card.width
                y2: card.height
                GradientStop { position: 0; color: card.frozen ? Theme.frozenLight : Theme.cardLight }
                GradientStop { position: 1; color: card.frozen ? Theme.frozenDark : Theme.cardDark }
            }

            PathLine { x: card.width - card.corner; y: 0 }
            PathArc { x: card.width; y: card.corner; radiusX: card.corner; radiusY: card.corner }
            PathLine { x: card.width; y: card.height - card.corner }
            PathArc { x: card.width - card.corner; y: card.height; radiusX: card.corner; radiusY: card.corner }
            PathLine { x: card.corner; y: card.height }
            PathArc { x: 0; y: card.height - card.corner; radiusX: card.corner; radiusY: card.corner }
            PathLine { x: 0; y: card.corner }
            PathArc { x: card.corner; y: 0; radiusX: card.corner; radiusY: card.corner }
        }
    }

    contentItem: Item {
        Item {
            objectName: "cardFront"
            anchors.fill: parent
            visible: !card.showsBack

            Item {
                anchors.fill: parent
                clip: true

                Shape {
                    anchors.fill: parent
                    opacity: 0.16
                    layer.enabled: true
                    layer.samples: 4

                    ShapePath {
                        strokeColor: "#ffffff"
                        strokeWidth: 1.4
                        fillColor: "transparent"
                        PathSvg {
                            path: "M-10 150 C60 110 120 110 180 146 C240 182 300 182 370 142 M-10 168 C60 128 120 128 180 164 C240 200 300 200 370 160 M-10 132 C60 92 120 92 180 128 C240 164 300 164 370 124 M-10 114 C60 74 120 74 180 110 C240 146 300 146 370 106"
                        }
                    }
                }
            }

            Logo {
                x: 22
                y: 20
                size: 34
                ground: "transparent"
                mark: Theme.deepInk
            }
            Text {
                x: 62
                y: 27
                text: "Alderbrook"
                color: Theme.deepInk
                font.pixelSize: 17
                font.weight: Font.DemiBold
            }
            Icon {
                x: parent.width - 46
                y: 24
                name: card.frozen ? "snow" : "wave"
                color: Theme.deepInk
            }
            Rectangle {
                x: 24
                y: 74
                width: 42
                height: 32
                radius: 7
                color: "#d9c48a"

                Rectangle { x: 0; y: 15; width: parent.width; height: 1; color: "#a8945c" }
                Rectangle { x: 14; y: 0; width: 1; height: parent.height; color: "#a8945c" }
                Rectangle { x: 28; y: 0; width: 1; height: parent.height; color: "#a8945c" }
            }
            PrivateText {
                x: 24
                y: 122
                text: Ledger.ownCardNumber
                viewTag: Privacy.ownCardNumber
                Merovanta.masked: true
                color: Theme.deepInk
                font.pixelSize: 21
                font.weight: Font.Medium
                font.letterSpacing: 1
            }
            PrivateText {
                x: 24
                y: parent.height - height - 20
                text: Ledger.customerName
                viewTag: Privacy.cardHolder
                color: Theme.deepInk
                font.pixelSize: Theme.label
            }
            Text {
                x: parent.width - width - 24
                y: parent.height - height - 20
                text: Ledger.cardExpiry
                color: Theme.deepInk
                font.pixelSize: Theme.label
            }
        }

        Item {
            objectName: "cardBack"
            anchors.fill: parent
            visible: card.showsBack

            Rectangle {
                y: 28
                width: parent.width
                height: 42
                color: "#10201b"
            }
            Rectangle {
                x: 24
                y: 92
                width: parent.width - 48
                height: 40
                radius: 6
                color: Theme.cardPaper

                Text {
                    x: 12
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Security code")
                    color: Theme.cardInk
                    font.pixelSize: Theme.caption
                }
                PrivateText {
                    x: parent.width - width - 14
                    y: Math.round((parent.height - height) / 2)
                    text: Ledger.securityCode
                    viewTag: Privacy.securityCode
                    Merovanta.masked: true
                    color: Theme.cardInk
                    font.pixelSize: 18
                    font.weight: Font.DemiBold
                    font.letterSpacing: 2
                }
            }
            Text {
                x: 24
                y: parent.height - height - 18
                width: parent.width - 48
                wrapMode: Text.WordWrap
                text: qsTr("Lost your card? Freeze it here at once, then call us at any hour.")
                color: Theme.deepInk
                font.pixelSize: 12
            }
        }
    }
}
