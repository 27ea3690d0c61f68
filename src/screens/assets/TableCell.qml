import QtQuick
import Palvera.Controls

/// One value of a row.
Item {
    id: root

    property string text: ""
    property string hint: "" ///< more of it, for whoever stays on it
    property bool atEnd: false
    readonly property bool hovered: pointer.hovered

    height: parent.height
    visible: width > 0

    Figures {
        Accessible.ignored: true
        anchors.fill: parent
        anchors.leftMargin: Theme.spaceSmall
        anchors.rightMargin: Theme.spaceSmall
        color: Theme.secondary
        elide: Text.ElideRight
        horizontalAlignment: root.atEnd ? Text.AlignRight : Text.AlignLeft
        text: root.text
        verticalAlignment: Text.AlignVCenter
    }

    HoverHandler {
        id: pointer
    }
}
