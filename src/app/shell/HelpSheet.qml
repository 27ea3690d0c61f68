pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Palvera.Controls
import Palvera.Shell

/// The manual: what one does with the program, in the order in which one meets it.
AppDialog {
    id: root

    required property ShellModel shell
    readonly property list<string> chapters: [
        qsTr("Sending a master"),
        qsTr("Open the client, the project and the deliverable, and drop the file there, or choose it with the button. A file may also be dropped on a row of the list. It goes up over several connections, is checked by the platform, and is filed: only then is it called done."),
        qsTr("When something comes between"),
        qsTr("A lost network, a restart of the platform or sleep are waited out, and the upload goes on by itself. If the program ends first, the upload waits under Interrupted in the transfers, and goes on from the part that it had reached. The file must not change meanwhile; if it was moved, use Locate."),
        qsTr("The transfers"),
        qsTr("The panel shows what moves, what is over and what was cut off. As many run at once as the settings say, in the order of the list; drag a row or use Ctrl and the arrows to change it. What is paused keeps its place and what has arrived. What is stopped is given up."),
        qsTr("Downloads"),
        qsTr("A file comes down into the downloads folder, which the first download asks for. A file that is there is never replaced: the new one gets a number. A download that was cut off waits under Interrupted, too."),
        qsTr("Sharing the line"),
        qsTr("Under Settings the transfers can be kept to so many MB/s, all day long or between certain hours. It holds at once, for what is moving, too."),
        qsTr("Signing in"),
        qsTr("With an e-mail address and a password, in the browser, or with a passkey of a security key. When a sign-in expires, transfers wait until you have signed in again."),
        qsTr("When you need help"),
        qsTr("The log of the transfers says what was sent when, and how fast. Errors can be copied from the menu of a row: the platform's support will ask for them.")
    ]

    title: qsTr("Help")
    visible: shell.sheet === ShellModel.Help
    widest: 600
    onClosed: shell.sheet = ShellModel.None
    onOpened: pane.forceActiveFocus(Qt.TabFocusReason)

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

        Flickable {
            id: pane

            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            contentHeight: words.height
            height: Math.min(words.height, (root.parent ? root.parent.height : 720) - Theme.grown(200))
            width: parent.width

            Accessible.name: root.title
            Accessible.role: Accessible.Document
            Keys.onPressed: event => {
                const steps = {
                    [Qt.Key_Up]: -Theme.rowHeight,
                    [Qt.Key_Down]: Theme.rowHeight,
                    [Qt.Key_PageUp]: -height,
                    [Qt.Key_PageDown]: height,
                    [Qt.Key_Space]: height,
                    [Qt.Key_Home]: -contentHeight,
                    [Qt.Key_End]: contentHeight
                };
                event.accepted = steps[event.key] !== undefined;
                if (event.accepted)
                    contentY = Math.max(0, Math.min(contentHeight - height, contentY + steps[event.key]));
            }

            T.ScrollBar.vertical: AppScrollBar {}

            Column {
                id: words

                spacing: Theme.spaceSmall
                width: parent.width - Theme.spaceMedium

                Repeater {
                    model: root.chapters

                    delegate: Label {
                        required property int index
                        required property string modelData
                        readonly property bool heads: index % 2 === 0

                        Accessible.role: heads ? Accessible.Heading : Accessible.Paragraph
                        bottomPadding: heads ? 0 : Theme.spaceMedium
                        color: heads ? Theme.text : Theme.secondary
                        font.pixelSize: heads ? Theme.textRow : Theme.textBody
                        font.weight: heads ? Font.DemiBold : Font.Normal
                        text: modelData
                        width: words.width
                        wrapMode: Text.Wrap
                    }
                }
            }
        }

        AppButton {
            anchors.right: parent.right
            kind: AppButton.Kind.Primary
            text: qsTr("Close")
            onClicked: root.close()
        }
    }
}
