pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Assets

/// A client's files apart from its projects: those delivered, and the Uploads bin.
FocusScope {
    id: root

    required property AssetsModel assets
    property alias toolbarItems: shared.data
    readonly property string searched: assets.search
    readonly property bool picking: assets.picking

    signal leaving()

    onPickingChanged: {
        if (picking)
            panel.setSource("FilesPanel.qml", {
                assets: root.assets
            });
        else
            panel.source = "";
    }
    onSearchedChanged: search.text = searched

    Accessible.name: root.assets.title
    Accessible.role: Accessible.Pane
    Keys.onPressed: event => {
        const isBack = event.key === Qt.Key_Backspace || event.key === Qt.Key_Left && event.modifiers & Qt.AltModifier;
        const isText = event.text.trim() !== "" && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier));
        event.accepted = true;
        if (isBack) {
            root.goBack();
        } else if (isText) {
            search.forceActiveFocus();
            search.insert(search.length, event.text);
        } else {
            event.accepted = false;
        }
    }
    Keys.onEscapePressed: {
        if (root.assets.search !== "")
            search.clear();
        else
            root.goBack();
    }

    Shortcut {
        enabled: root.enabled && root.visible
        sequence: "Ctrl+F"
        onActivated: search.forceActiveFocus(Qt.ShortcutFocusReason)
    }

    Toolbar {
        id: bar

        leading: BackButton {
            text: root.assets.backText
            onClicked: root.goBack()
        }
        trailing: [
            Picker {
                id: kinds

                compact: true
                currentIndex: root.assets.kind
                implicitHeight: Theme.controlHeight
                label: qsTr("Kind")
                model: root.assets.kinds
                visible: !root.assets.inUploads
                onActivated: index => {
                    root.assets.kind = index;
                    currentIndex = Qt.binding(() => root.assets.kind);
                }

                Tip {
                    shown: kinds.hovered && !kinds.popup.visible
                    text: qsTr("Which kind of file to show")
                }
            },
            AppButton {
                id: upload

                symbol: "arrow.up.doc"
                text: qsTr("Upload")
                onClicked: root.assets.chooseFiles()

                Tip {
                    shown: upload.hovered || upload.visualFocus
                    text: qsTr("Add master files to Uploads")
                }
            },
            AppButton {
                id: download

                enabled: root.assets.downloadCount > 0
                symbol: "square.and.arrow.down"
                text: root.assets.downloadText
                onClicked: root.assets.downloadSelected()

                Tip {
                    shown: download.hovered || download.visualFocus
                    text: root.assets.folder === "" ? qsTr("Download what is selected") : qsTr("Download what is selected\nto %1").arg(root.assets.folder)
                }
            },
            IconButton {
                id: more

                implicitWidth: Theme.controlHeight - Theme.spaceSmall
                symbol: "chevron.down"
                symbolSize: Theme.symbolSmall
                text: qsTr("Where downloads go")
                onClicked: folders.popup(more, more.width - folders.width, more.height + Theme.spaceTiny)

                AppMenu {
                    id: folders

                    MenuRow {
                        enabled: false
                        height: visible ? implicitHeight : 0
                        text: root.assets.folder
                        visible: text !== ""
                    }

                    MenuRow {
                        text: qsTr("Choose another folder…")
                        onTriggered: root.assets.chooseFolder()
                    }
                }
            },
            Row {
                id: shared

                spacing: Theme.spaceTiny
            }
        ]
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
            text: root.assets.title
        }

        SearchField {
            id: search

            anchors.right: parent.right
            anchors.top: parent.top
            anchors.topMargin: Theme.spaceHuge
            hint: root.assets.inUploads ? qsTr("Find in Uploads") : qsTr("Find an asset")
            width: Math.min(implicitWidth, parent.width / 2)
            onTextChanged: root.assets.search = text
            Keys.onDownPressed: table.forceActiveFocus()
            Keys.onEnterPressed: root.assets.searchNow()
            Keys.onReturnPressed: root.assets.searchNow()
        }

        Notice {
            id: notice

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: search.bottom
            anchors.topMargin: visible ? Theme.spaceLarge : 0
            height: visible ? implicitHeight : 0
            text: root.assets.notice
            onDismissed: root.assets.dismissNotice()
        }

        Card {
            id: card

            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.spaceHuge
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: notice.bottom
            anchors.topMargin: Theme.spaceLarge
            visible: root.assets.face === AssetsModel.Table

            AssetsTable {
                id: table

                anchors.fill: parent
                assets: root.assets
                focus: true
                label: heading.text
                onLeaving: root.goBack()
            }
        }

        Spinner {
            Accessible.name: qsTr("Loading")
            anchors.centerIn: card
            running: visible
            visible: root.assets.face === AssetsModel.Loading
        }

        Message {
            action: qsTr("Try again")
            anchors.centerIn: card
            detail: root.assets.error
            icon: "exclamationmark.triangle"
            title: qsTr("Could not load Assets")
            visible: root.assets.face === AssetsModel.Failed
            onActed: root.assets.load()
        }

        Message {
            action: root.assets.narrowed ? qsTr("Show all") : ""
            anchors.centerIn: card
            anchors.verticalCenterOffset: root.assets.face === AssetsModel.Table ? Theme.tableRowHeight : 0 // below the row of Uploads
            detail: root.assets.emptyDetail
            icon: root.assets.emptyIcon
            title: root.assets.emptyTitle
            visible: root.assets.face === AssetsModel.Empty || root.assets.face === AssetsModel.Table && root.assets.bare
            onActed: {
                root.assets.showAll();
                search.forceActiveFocus();
            }
        }
    }

    DropOverlay {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: bar.bottom
        text: root.assets.dropText
        onDropped: files => root.assets.drop(files)
    }

    // Made when it is wanted: most people drop their files.
    Loader {
        id: panel

        asynchronous: true
    }

    function goBack(): void {
        if (!root.assets.back())
            root.leaving();
    }
}
