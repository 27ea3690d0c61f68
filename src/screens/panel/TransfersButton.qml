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
        readonly property real inside: height / 2 - Theme.spaceTiny ///< of its middle, at least, from the edges of the button

        anchors.horizontalCenter: root.filled ? parent.right : parent.horizontalCenter
        anchors.horizontalCenterOffset: root.filled ? -Math.max(Theme.spaceTiny, inside) : Math.min(root.symbolSize / 2, root.width / 2 - inside)
        anchors.verticalCenter: root.filled ? parent.top : parent.verticalCenter
        anchors.verticalCenterOffset: root.filled ? Math.max(Theme.spaceTiny, inside) : Math.max(-root.symbolSize / 2, inside - root.height / 2)
        border.color: Theme.bar
        border.width: root.filled ? 1.5 : 0
        color: root.transfers.moving ? Theme.accentFill : Theme.warningFill
        spoken: false
        text: root.transfers.badge
        visible: text !== ""
        z: 1
    }
}
