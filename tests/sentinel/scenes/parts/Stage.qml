import QtQuick
import QtQuick.Controls

// A host's window. drive() is called before every picture.
ApplicationWindow {
    width: 300
    height: 400
    color: "white"

    function drive(step) {}
}
