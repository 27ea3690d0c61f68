import QtQuick
import QtQuick.Templates as T

/// Divides a menu.
T.MenuSeparator {
    id: root

    implicitHeight: Theme.spaceSmall + 1
    implicitWidth: 220

    contentItem: Item {
        Rectangle {
            anchors.left: parent.left
            anchors.margins: Theme.spaceSmall
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.line
            height: 1
        }
    }
}
