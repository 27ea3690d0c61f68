import QtQuick
import Palvera.Controls

/// Takes files wherever they are dropped, and says where they go while they hover.
Item {
    id: root

    property string text: ""

    signal dropped(var files) ///< a list of addresses

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.spaceMedium
        color: Theme.accentSoft
        opacity: 0.96
        radius: Theme.radiusLarge
        visible: target.containsDrag

        DashedFrame {
            anchors.fill: parent
            color: Theme.accent
            radius: Theme.radiusLarge
        }

        Column {
            anchors.centerIn: parent
            spacing: Theme.spaceMedium
            width: parent.width - 2 * Theme.spaceHuge

            SymbolIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                color: Theme.accent
                height: Theme.symbolHuge
                name: "arrow.down"
                width: height
            }

            Label {
                Accessible.role: Accessible.AlertMessage
                elide: Text.ElideMiddle
                font.pixelSize: Theme.textTitle
                font.weight: Font.DemiBold
                horizontalAlignment: Text.AlignHCenter
                text: root.text
                width: parent.width
            }
        }
    }

    DropArea {
        id: target

        anchors.fill: parent
        keys: ["text/uri-list"]
        // A program that hears of a move, while the files are still in the air or once they are dropped, deletes them.
        onEntered: drag => drag.accept(Qt.CopyAction)
        onPositionChanged: drag => drag.accept(Qt.CopyAction)
        onDropped: drop => {
            if (drop.urls.length > 0)
                drop.accept(Qt.CopyAction);
            else
                drop.accepted = false;
            root.dropped(drop.urls);
        }
    }
}
