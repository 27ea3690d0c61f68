import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// An upload to the deliverable that was cut off.
Rectangle {
    id: root

    required property DeliverableModel deliverable

    signal resumed()
    signal located()
    signal discarded()

    color: Theme.warningSoft
    height: row.height + 2 * Theme.spaceMedium
    radius: Theme.radiusMedium

    SymbolIcon {
        id: glyph

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.orange
        height: Theme.symbolLarge
        name: "arrow.clockwise.circle.fill"
        width: height
    }

    ActionRow {
        id: row

        actions: [
            AppButton {
                Accessible.name: qsTr("%1 %2").arg(text).arg(root.deliverable.cutOffName)
                kind: AppButton.Kind.Primary
                text: root.deliverable.cutOffSourceGone ? qsTr("Locate…") : qsTr("Resume")
                onClicked: root.deliverable.cutOffSourceGone ? root.located() : root.resumed()
            },
            AppButton {
                Accessible.name: qsTr("%1 %2").arg(text).arg(root.deliverable.cutOffName)
                text: qsTr("Discard")
                onClicked: root.discarded()
            }
        ]
        anchors.left: glyph.right
        anchors.leftMargin: Theme.spaceSmall
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter

        Label {
            Accessible.role: Accessible.AlertMessage
            elide: Text.ElideRight
            lineHeight: 1
            maximumLineCount: 4
            text: root.deliverable.cutOffText
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
