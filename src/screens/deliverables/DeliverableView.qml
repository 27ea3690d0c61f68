pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// One deliverable: what is known of it, and the way in for its file.
FocusScope {
    id: root

    required property DeliverableModel deliverable
    required property SenderModel sender
    required property string projectName
    property alias toolbarItems: bar.trailing

    signal leaving()
    signal resumed(string key) ///< what was cut off
    signal located(string key)
    signal discarded(string key)

    Accessible.name: root.deliverable.title
    Accessible.role: Accessible.Pane
    Keys.onEscapePressed: root.leaving()

    Toolbar {
        id: bar

        leading: BackButton {
            text: qsTr("Deliverables")
            onClicked: root.leaving()
        }
        title: root.projectName
        width: parent.width
    }

    ScrollPage {
        id: page

        anchors.bottom: parent.bottom
        anchors.top: bar.bottom
        contentHeight: column.height + 2 * Theme.spaceHuge
        width: parent.width

        Column {
            id: column

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.spaceHuge
            width: Math.min(Theme.grown(760), page.width - 2 * Theme.spaceHuge)
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
                                width: Math.min(implicitWidth, parent.width)
                            }
                        }
                    }
                }
            }

            InFlightCard {
                deliverable: root.deliverable
                visible: root.deliverable.face === DeliverableModel.InFlight
                width: parent.width
                onStopping: question.ask()
            }

            GoneCard {
                visible: root.deliverable.gone
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

            FailureCard {
                id: failure

                deliverable: root.deliverable
                visible: root.deliverable.failure !== ""
                width: parent.width
                onDiscarded: root.discarded(root.deliverable.cutOffKey)
                onLocated: root.located(root.deliverable.cutOffKey)
                onVisibleChanged: {
                    if (visible)
                        page.news = failure;
                }
            }

            CutOffCard {
                deliverable: root.deliverable
                visible: root.deliverable.cutOffText !== "" && !root.deliverable.cutOffFailed && root.deliverable.face !== DeliverableModel.InFlight
                width: parent.width
                onDiscarded: root.discarded(root.deliverable.cutOffKey)
                onLocated: root.located(root.deliverable.cutOffKey)
                onResumed: root.resumed(root.deliverable.cutOffKey)
            }

            Notice {
                id: notice

                severe: root.sender.refusal
                text: root.sender.notice
                width: parent.width
                onDismissed: root.sender.dismissNotice()
                onVisibleChanged: {
                    if (visible)
                        page.news = notice;
                }
            }
        }
    }

    ConfirmDialog {
        id: question

        property string key

        cancelText: qsTr("Keep going")
        confirmText: qsTr("Stop")
        destructive: true
        onAccepted: root.deliverable.stop(key)

        function ask() {
            key = root.deliverable.transferKey;
            title = root.deliverable.stopTitle;
            message = root.deliverable.stopMessage;
            open();
        }
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
