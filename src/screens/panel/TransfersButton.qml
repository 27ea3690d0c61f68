import QtQuick
import Palvera.Controls
import Palvera.Panel

/// Opens and closes the panel of transfers, and says how many there are.
IconButton {
    id: root

    required property TransfersModel transfers

    filled: transfers.moving
    symbol: "arrow.up.arrow.down"
    text: qsTr("Transfers")
    onClicked: transfers.panelOpen = !transfers.panelOpen

    Accessible.name: transfers.badge === "" ? text : qsTr("%1, %2").arg(text).arg(transfers.badgeText)

    Badge {
        anchors.horizontalCenter: root.filled ? parent.right : parent.horizontalCenter
        anchors.horizontalCenterOffset: root.filled ? -Theme.spaceTiny : root.symbolSize / 2
        anchors.verticalCenter: root.filled ? parent.top : parent.verticalCenter
        anchors.verticalCenterOffset: root.filled ? Theme.spaceTiny : -root.symbolSize / 2
        border.color: Theme.bar
        border.width: root.filled ? 1.5 : 0
        color: root.transfers.moving ? Theme.accentFill : Theme.warningFill
        spoken: false
        text: root.transfers.badge
        visible: text !== ""
        z: 1
    }
}
