import QtQuick.Dialogs

// The toolkit's dialog for the files that the visitor gives to the page.
FileDialog {
    id: root

    signal answered(var files)

    objectName: "fileChooser"
    onAccepted: answered(selectedFiles)
    onRejected: answered([])
}
