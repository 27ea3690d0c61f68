pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// The deliverables of a project, and what narrows them down.
FocusScope {
    id: root

    required property DeliverablesModel deliverables
    required property RowDropModel rowDrop
    required property SenderModel sender
    property alias toolbarItems: bar.trailing

    signal opened(int row)
    signal leaving()

    readonly property bool isMessage: deliverables.loading || deliverables.error !== ""
    readonly property string narrowing: deliverables.search + "\n" + deliverables.family + "\n" + deliverables.status + "\n" + deliverables.language + "\n" + deliverables.filled

    onNarrowingChanged: list.restart()

    Accessible.name: root.deliverables.title
    Accessible.role: Accessible.Pane
    Keys.onPressed: event => {
        if (event.text.trim() !== "" && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))) {
            search.forceActiveFocus();
            search.insert(search.length, event.text);
            event.accepted = true;
        }
    }
    Keys.onEscapePressed: {
        if (root.deliverables.search !== "")
            search.clear();
        else
            root.leaving();
    }

    Shortcut {
        enabled: root.enabled && root.visible
        sequence: "Ctrl+F"
        onActivated: search.forceActiveFocus(Qt.ShortcutFocusReason)
    }

    Toolbar {
        id: bar

        leading: BackButton {
            first: list
            text: qsTr("Projects")
            onClicked: root.leaving()
        }
        title: root.deliverables.orgName
        width: parent.width
    }

    Item {
        id: page

        anchors.bottom: parent.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: bar.bottom
        width: Math.min(Theme.grown(1120), parent.width - 2 * Theme.spaceHuge)

        Label {
            id: heading

            Accessible.role: Accessible.Heading
            anchors.left: parent.left
            anchors.right: search.left
            anchors.rightMargin: Theme.spaceMedium
            anchors.verticalCenter: search.verticalCenter
            font.pixelSize: Theme.textDisplay
            font.weight: Font.DemiBold
            text: root.deliverables.title
        }

        SearchField {
            id: search

            anchors.right: parent.right
            anchors.top: parent.top
            anchors.topMargin: Theme.spaceHuge
            hint: qsTr("Find a deliverable")
            width: Math.min(implicitWidth, parent.width / 2)
            text: root.deliverables.search
            onTextChanged: root.deliverables.search = text
            Keys.onDownPressed: if (list.count > 0)
                list.forceActiveFocus()
            Keys.onReturnPressed: if (list.count > 0)
                list.forceActiveFocus()
        }

        Notice {
            id: notice

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: search.bottom
            anchors.topMargin: visible ? Theme.spaceLarge : 0
            height: visible ? implicitHeight : 0
            severe: root.sender.refusal
            text: root.sender.notice
            onDismissed: root.sender.dismissNotice()
        }

        Card {
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.spaceHuge
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: notice.bottom
            anchors.topMargin: Theme.spaceLarge
            visible: !root.isMessage

            FilterBar {
                id: filters

                deliverables: root.deliverables
                width: parent.width
            }

            Rectangle {
                id: line

                anchors.top: filters.bottom
                color: Theme.line
                height: 1
                width: parent.width
            }

            RowList {
                id: list

                anchors.bottom: parent.bottom
                anchors.left: parent.left
                anchors.margins: Theme.spaceSmall
                anchors.right: parent.right
                anchors.top: line.bottom
                focus: true
                label: heading.text
                model: root.deliverables

                add: Transition {
                    enabled: root.deliverables.refreshing

                    NumberAnimation {
                        duration: Theme.faceChange
                        easing.type: Easing.OutCubic
                        from: 0
                        property: "opacity"
                        to: 1
                    }
                }
                displaced: Transition {
                    enabled: root.deliverables.refreshing

                    NumberAnimation {
                        duration: Theme.faceChange
                        easing.type: Easing.OutCubic
                        properties: "y"
                    }

                    NumberAnimation {
                        duration: Theme.quick
                        property: "opacity"
                        to: 1
                    }
                }

                delegate: DeliverableRow {
                    aimedAt: target.containsDrag && target.aim >= y && target.aim < y + height
                    separated: index < list.count - 1
                    onClicked: {
                        list.currentIndex = index;
                        root.opened(index);
                    }
                }
            }

            DropArea {
                id: target

                readonly property real aim: drag.y + list.contentY ///< where among the rows

                anchors.left: list.left
                anchors.right: list.right
                anchors.top: list.top
                enabled: root.rowDrop.title === "" && root.sender.doubtfulMessage === ""
                height: Math.min(list.height, list.originY + list.contentHeight - list.contentY) // beside the rows, nothing is taken
                keys: ["text/uri-list"]
                // A program that hears of a move, while the files are still in the air or once they are dropped, deletes them.
                onEntered: drag => drag.accept(Qt.CopyAction)
                onPositionChanged: drag => drag.accept(Qt.CopyAction)
                onDropped: drop => {
                    const row = list.itemAt(drop.x, drop.y + list.contentY) as DeliverableRow;
                    if (row && drop.urls.length > 0)
                        drop.accept(Qt.CopyAction);
                    else
                        drop.accepted = false;
                    if (row)
                        root.rowDrop.drop(row.key, drop.urls);
                }
            }

            Message {
                action: root.deliverables.anyFilter ? qsTr("Clear the filters") : root.deliverables.search !== "" ? qsTr("Clear the search") : ""
                anchors.centerIn: list
                detail: qsTr("Clear a filter to see more.")
                icon: "line.3.horizontal.decrease.circle"
                room: list.height
                title: qsTr("Nothing matches")
                visible: list.count === 0
                onActed: {
                    if (root.deliverables.anyFilter)
                        root.deliverables.clear();
                    else
                        search.clear();
                    search.forceActiveFocus();
                }
            }
        }

        Spinner {
            anchors.centerIn: parent
            running: visible
            visible: root.deliverables.loading
        }

        Message {
            action: qsTr("Try again")
            anchors.centerIn: parent
            detail: root.deliverables.error
            icon: "exclamationmark.triangle"
            title: qsTr("Could not load the deliverables")
            visible: !root.deliverables.loading && root.deliverables.error !== ""
            onActed: root.deliverables.load()
        }
    }
}
