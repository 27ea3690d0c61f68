import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// The last upload to the deliverable, which failed, and what is left of it.
Rectangle {
    id: root

    required property DeliverableModel deliverable

    signal located()
    signal discarded()

    color: Theme.dangerSoft
    height: row.height + 2 * Theme.spaceMedium
    radius: Theme.radiusMedium

    SymbolIcon {
        id: glyph

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.danger
        height: Theme.symbolLarge
        name: "exclamationmark.circle.fill"
        width: height
    }

    ActionRow {
        id: row

        actions: [
            AppButton {
                readonly property bool locating: root.deliverable.cutOffFailed && root.deliverable.cutOffSourceGone

                Accessible.name: qsTr("%1 %2").arg(text).arg(root.deliverable.failedName)
                kind: AppButton.Kind.Primary
                text: locating ? qsTr("Locate…") : qsTr("Try again")
                visible: !root.deliverable.gone
                onClicked: locating ? root.located() : root.deliverable.tryAgain()
            },
            AppButton {
                Accessible.name: qsTr("%1 %2").arg(text).arg(root.deliverable.failedName)
                text: qsTr("Discard")
                visible: root.deliverable.cutOffFailed
                onClicked: root.discarded()
            }
        ]
        anchors.left: glyph.right
        anchors.leftMargin: Theme.spaceSmall
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter

        Label {
            elide: Text.ElideMiddle
            font.weight: Font.Medium
            text: root.deliverable.failedName
            width: parent.width
        }

        CopyableText {
            color: Theme.danger
            text: root.deliverable.failure
            width: parent.width
        }
    }
}
