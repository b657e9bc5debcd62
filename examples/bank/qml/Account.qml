import QtQuick

QtObject {
    required property string name
    required property string kind
    required property string iban
    required property string iconName
    required property real balance
}
