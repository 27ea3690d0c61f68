pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls

Item {
    Card {
        anchors.horizontalCenter: parent.horizontalCenter
        height: list.contentHeight + 2 * Theme.spaceSmall
        width: 720

        ListView {
            id: list

            anchors.fill: parent
            anchors.margins: Theme.spaceSmall
            highlightMoveDuration: 0
            model: ["Assets", "Long Tide", "Paper Moon", "Salt – a name that is much too long for the room that there is for it, so that it is cut short"]

            delegate: ListRow {
                required property int index
                required property string modelData

                focus: index === 1
                separated: index < list.count - 1
                subtitle: index === 0 ? "Master assets, for any project" : ""
                symbol: index === 0 ? "tray" : "folder.fill"
                text: modelData
                width: list.width
                Component.onCompleted: {
                    if (index === 1)
                        forceActiveFocus(Qt.TabFocusReason);
                }
            }
        }
    }
}
