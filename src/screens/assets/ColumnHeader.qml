import QtQuick
import Palvera.Controls

/// The title of a column, and at its start a handle to draw it wider or narrower.
Item {
    id: root

    property string text: ""
    property bool atEnd: false ///< the figures below stand at its end

    signal drawn(real width)

    height: parent.height
    visible: width > 0

    Label {
        anchors.fill: parent
        anchors.leftMargin: Theme.spaceSmall
        anchors.rightMargin: Theme.spaceSmall
        color: Theme.secondary
        font.pixelSize: Theme.textSmall
        font.weight: Font.Medium
        horizontalAlignment: root.atEnd ? Text.AlignRight : Text.AlignLeft
        text: root.text
        verticalAlignment: Text.AlignVCenter
    }

    Rectangle {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.spaceSmall
        anchors.top: parent.top
        anchors.topMargin: Theme.spaceSmall
        color: handle.containsMouse || handle.pressed ? Theme.accent : Theme.line
        width: 1
    }

    MouseArea {
        id: handle

        property real width0: 0 ///< of the column when the handle was grabbed
        property real x0: 0     ///< of the pointer then, in the window

        cursorShape: Qt.SplitHCursor
        height: parent.height
        hoverEnabled: true
        preventStealing: true
        width: Theme.spaceSmall
        x: -width / 2
        onPositionChanged: mouse => {
            if (pressed)
                root.drawn(width0 + x0 - mapToItem(null, mouse.x, 0).x);
        }
        onPressed: mouse => {
            width0 = root.width;
            x0 = mapToItem(null, mouse.x, 0).x;
        }
    }
}
