pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Shell

/// What the keyboard does.
AppDialog {
    id: root

    required property ShellModel shell
    /// What one presses, and what that does, in turn.
    readonly property list<string> entries: [
        qsTr("Alt+Left"), qsTr("Back"),
        qsTr("F5"), qsTr("Reload"),
        qsTr("Ctrl+F"), qsTr("Search the list"),
        qsTr("Ctrl+Shift+T"), qsTr("Show the transfers"),
        qsTr("F10"), qsTr("Menu"),
        qsTr("Ctrl+,"), qsTr("Settings"),
        qsTr("Ctrl+?"), qsTr("Keyboard shortcuts"),
        qsTr("F1"), qsTr("Help"),
        qsTr("Ctrl+U"), qsTr("Check for updates"),
        qsTr("Ctrl++, Ctrl+-, Ctrl+0"), qsTr("Larger, smaller, usual text"),
        qsTr("Ctrl+W"), qsTr("Close the window"),
        qsTr("Ctrl+Q"), qsTr("Quit"),
        qsTr("Space"), qsTr("Pause or resume the transfer"),
        qsTr("Delete"), qsTr("Stop the transfer, or take it off the list"),
        qsTr("Ctrl+Up, Ctrl+Down"), qsTr("Move the transfer in the queue"),
        qsTr("Shift+F10"), qsTr("Menu of the row")
    ]

    title: qsTr("Keyboard shortcuts")
    visible: shell.sheet === ShellModel.Shortcuts
    widest: 480
    onClosed: shell.sheet = ShellModel.None
    onOpened: close.forceActiveFocus(Qt.TabFocusReason)

    contentItem: Column {
        readonly property bool modal: true ///< told to assistants

        spacing: Theme.spaceLarge

        Accessible.name: root.title
        Accessible.role: Accessible.Dialog

        Label {
            Accessible.role: Accessible.Heading
            font.pixelSize: Theme.textTitle
            font.weight: Font.DemiBold
            text: root.title
            width: parent.width
        }

        ScrollPage {
            activeFocusOnTab: interactive
            contentHeight: lines.height
            height: Math.min(lines.height, (root.parent ? root.parent.height : 720) - Theme.grown(200))
            width: parent.width

            Accessible.name: root.title
            Accessible.role: Accessible.Document
            Keys.onDownPressed: flick(0, -600)
            Keys.onUpPressed: flick(0, 600)

            Column {
                id: lines

                spacing: Theme.spaceTiny
                width: parent.width - Theme.spaceMedium

                Repeater {
                    model: root.entries.length / 2

                    delegate: Item {
                        id: line

                        required property int index
                        readonly property string pressed: root.entries[2 * index]
                        readonly property string does: root.entries[2 * index + 1]

                        height: Math.max(what.implicitHeight, keys.height)
                        width: parent ? (parent as Item).width : 0

                        Accessible.name: qsTr("%1: %2").arg(does).arg(pressed)
                        Accessible.role: Accessible.StaticText

                        Label {
                            id: what

                            Accessible.ignored: true
                            anchors.left: parent.left
                            anchors.right: keys.left
                            anchors.rightMargin: Theme.spaceMedium
                            anchors.verticalCenter: parent.verticalCenter
                            text: line.does
                        }

                        Chip {
                            id: keys

                            silent: true
                            anchors.right: parent.right
                            text: line.pressed
                        }
                    }
                }
            }
        }

        AppButton {
            id: close

            anchors.right: parent.right
            kind: AppButton.Kind.Primary
            text: qsTr("Close")
            onClicked: root.close()
        }
    }
}
