import QtQuick
import Palvera.Controls

/// How a deliverable stands: what it is said to be, that a file is filed on it, or that one is on its way.
Rectangle {
    id: root

    required property string text
    property bool moving: false
    property bool filed: false

    readonly property color ink: moving ? Theme.accent : filed ? Theme.green : Theme.secondary

    color: moving ? Qt.alpha(Theme.accent, 0.12) : filed ? Qt.alpha(Theme.green, 0.1) : Theme.field
    implicitHeight: row.implicitHeight + 4
    implicitWidth: row.implicitWidth + 14
    radius: height / 2

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.spaceTiny

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
            height: 12
            running: root.moving
            visible: root.moving
            width: 12
        }

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
            height: Theme.symbolSmall
            name: "checkmark.circle.fill"
            visible: root.filed && !root.moving
            width: height
        }

        Figures {
            Accessible.ignored: true
            anchors.verticalCenter: parent.verticalCenter
            color: root.moving ? root.ink : root.filed ? Theme.text : Theme.secondary
            font.pixelSize: Theme.textCaption
            font.weight: Font.Medium
            text: root.text
        }
    }

    HoverHandler {
        id: pointer
    }

    Tip {
        shown: pointer.hovered && root.filed && !root.moving
        text: qsTr("A file is filed against this")
    }
}
