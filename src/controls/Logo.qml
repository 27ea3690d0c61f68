import QtQuick
import Palvera.Controls

/// The mark with the name beside it.
Row {
    id: root

    spacing: Theme.spaceSmall

    Accessible.name: name.text
    Accessible.role: Accessible.Graphic

    BrandMark {
        anchors.verticalCenter: parent.verticalCenter
        height: Theme.symbolLarge
        width: height
    }

    Label {
        id: name

        Accessible.ignored: true
        anchors.verticalCenter: parent.verticalCenter
        font.pixelSize: Theme.textHeading
        font.weight: Font.DemiBold
        text: "Palvera"
    }
}
