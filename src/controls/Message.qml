import QtQuick
import Palvera.Controls

/// What there is to say where there is nothing to show.
Column {
    id: root

    required property string icon
    required property string title
    property string detail: ""
    property string action: "" ///< text of a button, where something can be done
    property real room: Infinity ///< height that there is: the symbol gives way

    signal acted()

    spacing: Theme.spaceSmall
    width: Math.min(Theme.grown(360), parent ? parent.width : Infinity)

    SymbolIcon {
        anchors.horizontalCenter: parent.horizontalCenter
        color: Theme.secondary
        height: Theme.symbolHuge
        name: root.icon
        visible: root.room >= Theme.grown(150)
        width: height
    }

    Label {
        font.pixelSize: Theme.textHeading
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        maximumLineCount: 3
        text: root.title
        width: parent.width
        wrapMode: Text.Wrap
    }

    Words {
        color: Theme.secondary
        horizontalAlignment: Text.AlignHCenter
        text: root.detail
        visible: text !== ""
        width: parent.width
    }

    Item {
        height: Theme.spaceSmall
        visible: root.action !== ""
        width: 1
    }

    AppButton {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.action
        visible: root.action !== ""
        onClicked: root.acted()
    }
}
