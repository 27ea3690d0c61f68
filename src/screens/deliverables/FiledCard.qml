import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// The file that is filed on a deliverable, and the way to replace it.
Card {
    id: root

    required property DeliverableModel deliverable

    signal dropped(var files) ///< a list of addresses

    implicitHeight: column.implicitHeight + 2 * Theme.spaceHuge

    Column {
        id: column

        anchors.left: parent.left
        anchors.margins: Theme.spaceHuge
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceLarge

        Label {
            Accessible.role: Accessible.Heading
            font.weight: Font.DemiBold
            text: qsTr("Filed against this deliverable")
        }

        Row {
            spacing: Theme.spaceMedium
            width: parent.width

            Rectangle {
                id: tile

                anchors.verticalCenter: parent.verticalCenter
                color: Theme.successSoft
                height: Theme.controlHeight + Theme.spaceSmall
                radius: Theme.radiusMedium
                width: height

                SymbolIcon {
                    anchors.centerIn: parent
                    color: Theme.success
                    height: Theme.symbolLarge
                    name: "doc.fill"
                    width: height
                }
            }

            ActionRow {
                actions: AppButton {
                    Accessible.name: qsTr("%1 %2").arg(text).arg(root.deliverable.filedName)
                    symbol: "square.and.arrow.down"
                    text: qsTr("Download")
                    onClicked: root.deliverable.downloadFiled()
                }
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - tile.width - parent.spacing

                Label {
                    elide: Text.ElideMiddle
                    font.pixelSize: Theme.textRow
                    font.weight: Font.Medium
                    text: root.deliverable.filedName
                    width: parent.width
                }

                Figures {
                    color: Theme.secondary
                    font.pixelSize: Theme.textSmall
                    text: root.deliverable.filedDetails
                    visible: text !== ""
                    width: parent.width
                }
            }
        }

        DropZone {
            headline: qsTr("Drop a file to replace this")
            prominent: false
            width: parent.width
            onChoosing: root.deliverable.chooseFile()
            onDropped: files => root.dropped(files)
        }
    }
}
