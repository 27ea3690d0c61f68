import QtQuick
import QtQuick.Window
import Palvera.Controls
import Palvera.Panel
import Palvera.App

/// The window of the transfers panel. Shown as long as the model says so; closing it tells the model.
Window {
    id: root

    required property TransfersModel transfers

    color: Theme.window
    height: 540
    minimumHeight: panel.implicitHeight
    minimumWidth: panel.implicitWidth
    title: qsTr("Transfers")
    visible: transfers.panelOpen
    width: 420
    onClosing: transfers.panelOpen = false
    // As texts grow.
    onMinimumHeightChanged: height = Math.max(height, minimumHeight)
    onMinimumWidthChanged: width = Math.max(width, minimumWidth)

    FloatingWindow {}

    FocusKeeper {}

    Shortcut {
        sequences: ["Ctrl+Shift+T", "Ctrl+W", "Escape"]
        onActivated: root.transfers.panelOpen = false
    }

    TransfersView {
        id: panel

        anchors.fill: parent
        focus: true
        transfers: root.transfers
    }
}
