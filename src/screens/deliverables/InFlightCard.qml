pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// The transfer that is under way for a deliverable.
Card {
    id: root

    required property DeliverableModel deliverable

    signal stopping()

    implicitHeight: column.implicitHeight + 2 * Theme.spaceHuge

    Column {
        id: column

        anchors.left: parent.left
        anchors.margins: Theme.spaceHuge
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceLarge

        Row {
            spacing: Theme.spaceMedium
            width: parent.width

            SymbolIcon {
                id: symbol

                anchors.verticalCenter: parent.verticalCenter
                color: root.deliverable.paused ? Theme.secondary : root.deliverable.downloading ? Theme.success : Theme.accent
                height: Theme.tile
                name: root.deliverable.downloading ? "arrow.down.circle.fill" : "arrow.up.circle.fill"
                width: height
            }

            ActionRow {
                actions: [
                    AppButton {
                        Accessible.name: qsTr("%1 %2").arg(text).arg(root.deliverable.transferName)
                        symbol: root.deliverable.paused ? "play.fill" : "pause.fill"
                        text: root.deliverable.paused ? qsTr("Resume") : qsTr("Pause")
                        onClicked: root.deliverable.paused ? root.deliverable.resume() : root.deliverable.pause()
                    },
                    AppButton {
                        Accessible.name: qsTr("%1 %2").arg(text).arg(root.deliverable.transferName)
                        symbol: "stop.fill"
                        text: qsTr("Stop")
                        onClicked: root.stopping()
                    }
                ]
                width: parent.width - symbol.width - parent.spacing

                Label {
                    font.pixelSize: Theme.textHeading
                    font.weight: Font.DemiBold
                    text: root.deliverable.headline
                    width: parent.width
                }

                Label {
                    color: Theme.secondary
                    elide: Text.ElideMiddle
                    text: root.deliverable.transferName
                    width: parent.width
                }
            }
        }

        ProgressLine {
            fill: root.deliverable.paused ? Theme.secondary : root.deliverable.trouble !== "" ? Theme.orange : Theme.accent
            label: root.deliverable.headline
            value: root.deliverable.fraction
            width: parent.width
        }

        Label {
            color: Theme.warning
            elide: Text.ElideRight
            maximumLineCount: 6
            text: root.deliverable.trouble
            visible: text !== ""
            width: parent.width
            wrapMode: Text.Wrap
        }

        Grid {
            id: figures

            readonly property bool roomy: width >= Theme.grown(440)
            readonly property list<string> values: [root.deliverable.doneText, root.deliverable.transferredText, root.deliverable.speedText, root.deliverable.leftText]

            columns: roomy ? 4 : 2
            rowSpacing: Theme.spaceMedium
            width: parent.width

            Repeater {
                model: [qsTr("Done"), qsTr("Transferred"), qsTr("Speed"), qsTr("Left")]

                Column {
                    id: figure

                    required property int index
                    required property string modelData

                    spacing: Theme.focusGap
                    width: column.width * (!figures.roomy ? 0.5 : index === 1 ? 0.4 : 0.2)

                    Label {
                        color: Theme.secondary
                        font.pixelSize: Theme.textSmall
                        text: figure.modelData
                    }

                    Figures {
                        font.pixelSize: Theme.textRow
                        font.weight: Font.Medium
                        text: figures.values[figure.index]
                        width: parent.width
                    }
                }
            }
        }
    }
}
