import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// A sheet in the middle of the window, before everything else. Escape closes it.
T.Dialog {
    id: root

    property int widest: 340

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.CloseOnEscape
    focus: true
    font.family: Theme.family
    implicitHeight: contentItem.implicitHeight + 2 * padding
    modal: true
    padding: Theme.spaceHuge
    onAboutToShow: contentItem.parent.Accessible.ignored = true // to assistants, what is in it is the dialog
    width: Math.min(Theme.grown(widest), (parent ? parent.width : widest) - 2 * Theme.spaceLarge)

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }
    background: Item {
        Shadow {
            anchors.fill: parent
            depth: 28
        }

        Rectangle {
            anchors.fill: parent
            border.color: Theme.line
            color: Theme.raised
            radius: Theme.radiusLarge
        }
    }
}
