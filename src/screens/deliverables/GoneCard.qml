import QtQuick
import Palvera.Controls

/// Says that the platform no longer has the deliverable.
Card {
    id: root

    implicitHeight: words.implicitHeight + 2 * Theme.spaceHuge

    SymbolIcon {
        id: glyph

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceHuge
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.warning
        height: Theme.tile
        name: "exclamationmark.triangle.fill"
        width: height
    }

    Column {
        id: words

        anchors.left: glyph.right
        anchors.leftMargin: Theme.spaceLarge
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceHuge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceTiny

        Label {
            Accessible.role: Accessible.AlertMessage
            font.pixelSize: Theme.textHeading
            font.weight: Font.DemiBold
            text: qsTr("The platform no longer has this deliverable")
            width: parent.width
            wrapMode: Text.Wrap
        }

        Label {
            color: Theme.secondary
            text: qsTr("Nothing can be sent to it. If it comes back, it takes files again.")
            width: parent.width
            wrapMode: Text.Wrap
        }
    }
}
