pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.App

/// The projects of the client that is open, and the way to its assets.
FocusScope {
    id: root

    required property ProjectsModel projects
    property alias toolbarItems: bar.trailing

    signal opened(int row)
    signal leaving()

    Accessible.name: qsTr("Projects of %1").arg(root.projects.orgName)
    Accessible.role: Accessible.Pane
    Keys.onPressed: event => {
        if (event.text.trim() !== "" && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))) {
            search.forceActiveFocus();
            search.insert(search.length, event.text);
            event.accepted = true;
        }
    }
    Keys.onEscapePressed: root.leaving()

    Shortcut {
        enabled: root.enabled && root.visible
        sequence: "Ctrl+F"
        onActivated: search.forceActiveFocus(Qt.ShortcutFocusReason)
    }

    Toolbar {
        id: bar

        title: root.projects.orgName
        leading: BackButton {
            first: list
            text: qsTr("Clients")
            onClicked: root.leaving()
        }
        width: parent.width
    }

    Item {
        id: page

        readonly property bool narrow: width < Theme.grown(560)

        anchors.bottom: parent.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: bar.bottom
        width: Math.min(Theme.grown(720), parent.width - 2 * Theme.spaceHuge)

        Label {
            id: heading

            Accessible.role: Accessible.Heading
            anchors.left: parent.left
            anchors.right: order.visible && !page.narrow ? order.left : search.left
            anchors.rightMargin: Theme.spaceMedium
            anchors.verticalCenter: search.verticalCenter
            font.pixelSize: Theme.textDisplay
            font.weight: Font.DemiBold
            text: qsTr("Projects")
        }

        Row {
            id: order

            anchors.right: page.narrow ? parent.right : search.left
            anchors.rightMargin: page.narrow ? 0 : Theme.spaceMedium
            spacing: Theme.spaceSmall
            visible: root.projects.sortable && root.projects.error === ""
            y: page.narrow ? search.y + search.height + Theme.spaceSmall : search.y

            Label {
                Accessible.ignored: true
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.secondary
                font.pixelSize: Theme.textSmall
                text: qsTr("Order")
            }

            Picker {
                compact: true
                currentIndex: root.projects.order
                implicitHeight: Theme.controlHeight
                label: qsTr("Order")
                model: root.projects.orders
                onActivated: index => {
                    root.projects.order = index;
                    currentIndex = Qt.binding(() => root.projects.order);
                }
            }
        }

        SearchField {
            id: search

            anchors.right: parent.right
            anchors.top: parent.top
            anchors.topMargin: Theme.spaceHuge
            hint: qsTr("Find a project")
            width: Math.min(implicitWidth, parent.width / 2)
            text: root.projects.search
            onTextChanged: root.projects.search = text
            Keys.onDownPressed: if (list.count > 0)
                list.forceActiveFocus()
            Keys.onReturnPressed: if (list.count > 0)
                list.forceActiveFocus()
        }

        ProgressLine {
            anchors.bottom: card.top
            anchors.bottomMargin: Theme.spaceSmall
            anchors.left: parent.left
            anchors.right: parent.right
            height: 2
            label: qsTr("Loading the projects")
            value: -1
            visible: root.projects.loading
        }

        Card {
            id: card

            anchors.top: order.visible && page.narrow ? order.bottom : search.bottom
            anchors.topMargin: Theme.spaceLarge
            height: Math.min(list.contentHeight + 2 * Theme.spaceSmall, parent.height - y - Theme.spaceHuge - footer.height)
            visible: list.count > 0 && root.projects.error === ""
            width: parent.width

            RowList {
                id: list

                anchors.fill: parent
                anchors.margins: Theme.spaceSmall
                focus: true
                label: heading.text
                model: root.projects

                delegate: ListRow {
                    required property string title
                    required index
                    required subtitle
                    required symbol

                    focusPolicy: Qt.NoFocus
                    separated: index < list.count - 1
                    text: title
                    width: ListView.view.width
                    onClicked: {
                        list.currentIndex = index;
                        root.opened(index);
                    }
                }
            }
        }

        Message {
            id: footer

            anchors.horizontalCenter: parent.horizontalCenter
            anchors.top: card.bottom
            anchors.topMargin: Theme.spaceVast
            detail: qsTr("Nothing has been shared with you in this client yet.")
            height: visible ? implicitHeight + Theme.spaceVast : 0
            icon: "folder"
            title: qsTr("No projects")
            visible: root.projects.empty && root.projects.error === "" && root.projects.search === ""
        }

        Message {
            action: qsTr("Clear the search")
            anchors.centerIn: parent
            icon: "magnifyingglass"
            title: qsTr("Nothing matches")
            visible: list.count === 0 && root.projects.error === ""
            onActed: {
                search.clear();
                search.forceActiveFocus();
            }
        }

        Message {
            action: qsTr("Try again")
            anchors.centerIn: parent
            detail: root.projects.error
            icon: "exclamationmark.triangle"
            title: qsTr("Could not load your projects")
            visible: root.projects.error !== ""
            onActed: root.projects.load()
        }
    }
}
