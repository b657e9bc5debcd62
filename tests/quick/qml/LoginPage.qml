import QtQuick.Controls

Page {}
