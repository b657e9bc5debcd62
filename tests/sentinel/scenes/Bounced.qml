import QtQuick
import QtQuick.Controls
import "parts"

Stage {
    ListView {
        id: list
        anchors.fill: parent
        clip: true
        header: SecretText { height: 40 }
        headerPositioning: ListView.PullBackHeader
        section { property: "part"; delegate: Secret { height: 20 } labelPositioning: ViewSection.CurrentLabelAtStart | ViewSection.InlineLabels }
        model: ListModel { id: rows }
        spacing: 6
        delegate: Row { Open {} SecretText { text: "Row " + index } }
        Component.onCompleted: { for (let row = 0; row < 40; ++row) rows.append({ part: "Part " + Math.floor(row / 5) }) }
    }

    function drive(step) {
        if (step % 6 == 0) list.contentY = -70
        else if (step % 6 == 1) list.returnToBounds()
        else if (step % 6 == 3) list.flick(0, -2500)
    }
}
