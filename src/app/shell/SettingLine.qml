import QtQuick
import Palvera.Controls

/// One setting: what it is, what is to be known of it, and at the end what changes it.
Item {
    id: root

    required property string title
    property string hint: ""
    property bool separated: true ///< a line towards the one above
    default property alias content: end.data

    implicitHeight: Math.max(texts.height, end.height) + 2 * Theme.spaceSmall
    width: parent ? parent.width : 0

    Rectangle {
        color: Theme.line
        height: 1
        visible: root.separated
        width: parent.width
    }

    Column {
        id: texts

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceMedium
        anchors.right: end.left
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.focusGap

        Label {
            Accessible.ignored: true
            lineHeight: 1
            text: root.title
            width: parent.width
            wrapMode: Text.Wrap
        }

        Label {
            color: Theme.secondary
            font.pixelSize: Theme.textSmall
            text: root.hint
            visible: text !== ""
            width: parent.width
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        }
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceSmall
    }
}
