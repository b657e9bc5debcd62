import QtQuick
import QtQuick.Controls

Page {
    background: Rectangle { color: "#204020" }
    SecretField { x: 60; y: 100 }
}
