import QtQuick
import Palvera.Controls
import Palvera.Panel

/// Opens and closes the panel of transfers, and says how many there are.
IconButton {
    id: root

    required property TransfersModel transfers

    badge: transfers.badge
    badgeColor: transfers.moving ? Theme.accentFill : Theme.warningFill
    badgeText: transfers.badgeText
    filled: transfers.moving
    symbol: "arrow.up.arrow.down"
    text: qsTr("Transfers")
    onClicked: transfers.panelOpen = !transfers.panelOpen
}
