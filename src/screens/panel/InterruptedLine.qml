import QtQuick
import Palvera.Controls
import Palvera.Panel

/// Says that transfers were cut off, where somebody begins who does not look into the panel. As high as nothing
/// when there is nothing to say.
Rectangle {
    id: root

    required property TransfersModel transfers

    color: Theme.warningSoft
    height: visible ? row.height + 2 * Theme.spaceMedium : 0
    radius: Theme.radiusMedium
    visible: transfers.interrupted.summary !== ""

    SymbolIcon {
        id: glyph

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceLarge
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
                anchors.verticalCenter: parent.verticalCenter
                kind: AppButton.Kind.Link
                text: qsTr("Resume all")
                onClicked: root.transfers.interrupted.resumeAll()
            },
            Label {
                Accessible.ignored: true
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.secondary
                text: "·"
            },
            AppButton {
                anchors.verticalCenter: parent.verticalCenter
                kind: AppButton.Kind.Link
                text: qsTr("Show")
                onClicked: root.transfers.showInterrupted()
            }
        ]
        anchors.left: glyph.right
        anchors.leftMargin: Theme.spaceMedium
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceLarge
        anchors.verticalCenter: parent.verticalCenter

        Label {
            Accessible.role: Accessible.AlertMessage
            elide: Text.ElideRight
            font.weight: Font.Medium
            lineHeight: 1
            maximumLineCount: 2
            text: root.transfers.interrupted.summary
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
