import QtQuick
import Palvera.Controls

/// How a deliverable stands: what it is said to be, that a file is filed on it, that one is on its way, or that the last one
/// did not get there.
Rectangle {
    id: root

    required property string text
    property bool moving: false
    property bool still: false ///< it would move, but waits or is paused
    property bool filed: false
    property bool failed: false

    readonly property color ink: moving ? Theme.accent : failed ? Theme.danger : filed ? Theme.green : Theme.secondary

    color: moving ? Theme.accentSoft : failed ? Theme.dangerSoft : filed ? Qt.alpha(Theme.green, 0.1) : Theme.field
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
            height: Theme.textSmall
            running: root.moving && !root.still
            visible: running
            width: height
        }

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
            height: Theme.symbolSmall
            name: root.failed ? "exclamationmark.circle.fill" : "checkmark.circle.fill"
            visible: (root.filed || root.failed) && !root.moving
            width: height
        }

        Figures {
            Accessible.ignored: true
            anchors.verticalCenter: parent.verticalCenter
            color: root.moving || root.failed ? root.ink : root.filed ? Theme.text : Theme.secondary
            font.pixelSize: Theme.textCaption
            font.weight: Font.Medium
            text: root.text
        }
    }

    HoverHandler {
        id: pointer
    }

    Tip {
        shown: pointer.hovered && root.filed && !root.failed && !root.moving
        text: qsTr("A file is filed against this")
    }
}
