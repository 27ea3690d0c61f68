pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// One deliverable: what is known of it, and the way in for its file.
FocusScope {
    id: root

    required property DeliverableModel deliverable
    required property string projectName
    property alias toolbarItems: bar.trailing

    signal leaving()
    signal resumed(string key) ///< what was cut off
    signal located(string key)
    signal discarded(string key)

    Keys.onEscapePressed: root.leaving()

    Toolbar {
        id: bar

        leading: AppButton {
            kind: AppButton.Kind.Link
            symbol: "chevron.left"
            text: qsTr("Deliverables")
            onClicked: root.leaving()
        }
        title: root.projectName
        width: parent.width
    }

    Flickable {
        id: page

        anchors.bottom: parent.bottom
        anchors.top: bar.bottom
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        contentHeight: column.height + 2 * Theme.spaceHuge
        width: parent.width

        Column {
            id: column

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.spaceHuge
            width: Math.min(760, page.width - 2 * Theme.spaceHuge)
            y: Theme.spaceHuge

            Row {
                spacing: Theme.spaceLarge
                width: parent.width

                FamilyTile {
                    id: tile

                    symbol: root.deliverable.symbol
                    tint: root.deliverable.tint
                }

                Column {
                    spacing: Theme.spaceTiny
                    width: parent.width - tile.width - parent.spacing

                    Label {
                        Accessible.role: Accessible.Heading
                        elide: Text.ElideRight
                        font.pixelSize: Theme.textTitle
                        font.weight: Font.DemiBold
                        maximumLineCount: 3
                        text: root.deliverable.title
                        width: parent.width
                        wrapMode: Text.Wrap
                    }

                    Label {
                        color: Theme.secondary
                        elide: Text.ElideRight
                        maximumLineCount: 3
                        text: root.deliverable.contextLine
                        visible: text !== ""
                        width: parent.width
                        wrapMode: Text.Wrap
                    }

                    Flow {
                        spacing: Theme.spaceSmall
                        topPadding: Theme.spaceTiny
                        width: parent.width

                        Repeater {
                            model: root.deliverable.chips

                            Chip {
                                required property string modelData

                                text: modelData
                            }
                        }
                    }
                }
            }

            InFlightCard {
                deliverable: root.deliverable
                visible: root.deliverable.face === DeliverableModel.InFlight
                width: parent.width
            }

            FiledCard {
                deliverable: root.deliverable
                visible: root.deliverable.face === DeliverableModel.Filed
                width: parent.width
                onDropped: files => root.deliverable.drop(files)
            }

            DropZone {
                detail: qsTr("Large files go up on several connections at once, and pick up where they left off if the network drops.")
                headline: qsTr("Drop a file here")
                visible: root.deliverable.face === DeliverableModel.Empty
                width: parent.width
                onChoosing: root.deliverable.chooseFile()
                onDropped: files => root.deliverable.drop(files)
            }

            CutOffCard {
                deliverable: root.deliverable
                visible: root.deliverable.cutOffText !== "" && root.deliverable.face !== DeliverableModel.InFlight
                width: parent.width
                onDiscarded: root.discarded(root.deliverable.cutOffKey)
                onLocated: root.located(root.deliverable.cutOffKey)
                onResumed: root.resumed(root.deliverable.cutOffKey)
            }

            Rectangle {
                color: Theme.dangerSoft
                height: refusal.implicitHeight + 2 * Theme.spaceMedium
                radius: Theme.radiusMedium
                visible: root.deliverable.refusal !== ""
                width: parent.width

                SymbolIcon {
                    id: refused

                    anchors.left: parent.left
                    anchors.leftMargin: Theme.spaceMedium
                    anchors.verticalCenter: parent.verticalCenter
                    color: Theme.danger
                    height: Theme.symbolMedium
                    name: "exclamationmark.circle.fill"
                    width: height
                }

                Label {
                    id: refusal

                    Accessible.role: Accessible.AlertMessage
                    anchors.left: refused.right
                    anchors.leftMargin: Theme.spaceSmall
                    anchors.right: parent.right
                    anchors.rightMargin: Theme.spaceMedium
                    anchors.verticalCenter: parent.verticalCenter
                    color: Theme.danger
                    elide: Text.ElideRight
                    maximumLineCount: 6
                    text: root.deliverable.refusal
                    wrapMode: Text.Wrap
                }
            }
        }
    }

    ConfirmDialog {
        cancelText: qsTr("Cancel")
        careful: true
        confirmText: qsTr("Send it here")
        message: root.deliverable.doubtfulMessage
        title: qsTr("Send a full-length file to Textless elements?")
        visible: root.deliverable.doubtfulMessage !== ""
        onAccepted: root.deliverable.confirmDoubtful()
        onRejected: root.deliverable.dismissDoubtful()
    }

    // Made when it is wanted: most people drop their files.
    Loader {
        id: picker

        asynchronous: true

        Connections {
            function onPickingChanged() {
                if (root.deliverable.picking)
                    picker.setSource("FilePanel.qml", {
                        deliverable: root.deliverable
                    });
                else
                    picker.source = "";
            }

            target: root.deliverable
        }
    }
}
