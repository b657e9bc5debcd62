import QtQuick.Controls

Dialog {
    modal: true
}
