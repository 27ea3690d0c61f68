import QtQuick
import Palvera.Controls

/// Where a file is dropped, or chosen. `prominent` for the one that fills the screen.
Item {
    id: root

    property bool prominent: true
    property string headline
    property string detail: ""
    readonly property bool over: target.containsDrag

    signal dropped(var files) ///< a list of addresses
    signal choosing()

    implicitHeight: column.implicitHeight + 2 * (prominent ? Theme.spaceVast + Theme.spaceSmall : Theme.spaceLarge)
    scale: over && prominent ? 1.04 : 1

    Accessible.name: headline
    Accessible.role: Accessible.Grouping

    Behavior on scale {
        NumberAnimation {
            duration: Theme.quick
            easing.type: Easing.OutCubic
        }
    }

    Rectangle {
        anchors.fill: parent
        color: root.over ? Theme.accentSoft : root.prominent ? Theme.surface : "transparent"
        radius: Theme.radiusLarge

        Behavior on color {
            ColorAnimation {
                duration: Theme.quick
            }
        }
    }

    DashedFrame {
        anchors.fill: parent
        color: root.over ? Theme.accent : Theme.secondary
        radius: Theme.radiusLarge
    }

    Column {
        id: column

        anchors.centerIn: parent
        spacing: Theme.spaceSmall
        width: Math.min(Theme.grown(460), parent.width - 2 * Theme.spaceLarge)

        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            color: root.over ? Theme.accent : Theme.secondary
            height: Theme.symbolHuge
            name: "arrow.up.doc"
            visible: root.prominent
            width: height
        }

        Label {
            elide: Text.ElideRight
            font.pixelSize: root.prominent ? Theme.textHeading : Theme.textBody
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 3
            text: root.headline
            width: parent.width
            wrapMode: Text.Wrap
        }

        Words {
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            mostLines: 4
            text: root.detail
            visible: text !== ""
            width: parent.width
        }

        Item {
            height: Theme.spaceTiny
            visible: root.prominent
            width: 1
        }

        AppButton {
            anchors.horizontalCenter: parent.horizontalCenter
            symbol: "folder.fill"
            text: qsTr("Choose a file")
            onClicked: root.choosing()
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
