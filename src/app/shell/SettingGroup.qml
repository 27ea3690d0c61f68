import QtQuick
import Palvera.Controls

/// Settings that belong together.
Column {
    id: root

    required property string title
    default property alias content: body.data

    spacing: Theme.spaceSmall
    width: parent ? parent.width : 0

    Label {
        Accessible.role: Accessible.Heading
        color: Theme.secondary
        font.pixelSize: Theme.textSmall
        font.weight: Font.DemiBold
        text: root.title
        width: parent.width
    }

    Rectangle {
        border.color: Theme.line
        color: "transparent"
        height: body.height
        radius: Theme.radiusMedium
        width: parent.width

        Column {
            id: body

            width: parent.width
        }
    }
}
