import QtQuick
import Palvera.Controls
import Palvera.Panel

/// Below the transfers of a tab: what they come to, and what can be done with all of them.
Rectangle {
    id: root

    required property TransfersModel transfers
    readonly property bool moving: transfers.tab === TransfersModel.InFlight

    signal stopping()

    color: Theme.bar
    height: Math.max(Theme.controlHeight, root.moving ? sum.height : 0) + 2 * Theme.spaceSmall

    Rectangle {
        color: Theme.line
        height: 1
        width: parent.width
    }

    Figures {
        id: sum

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceMedium
        anchors.right: buttons.left
        anchors.rightMargin: Theme.spaceSmall
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        elide: Text.ElideRight
        font.pixelSize: Theme.textSmall
        lineHeight: 1
        maximumLineCount: 2
        text: root.transfers.footer
        visible: root.moving
        wrapMode: Text.Wrap
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: root.moving ? Theme.spaceTiny : 10
        anchors.verticalCenter: parent.verticalCenter

        IconButton {
            symbol: root.transfers.allPaused ? "play.fill" : "pause.fill"
            symbolColor: Theme.secondary
            symbolSize: Theme.symbolMedium
            text: root.transfers.allPaused ? qsTr("Resume all") : qsTr("Pause all")
            visible: root.moving
            onClicked: root.transfers.allPaused ? root.transfers.resumeAll() : root.transfers.pauseAll()
        }

        IconButton {
            symbol: "stop.fill"
            symbolColor: Theme.secondary
            symbolSize: Theme.symbolMedium
            text: qsTr("Stop all")
            visible: root.moving
            onClicked: root.stopping()
        }

        AppButton {
            kind: AppButton.Kind.Link
            text: qsTr("Clear")
            visible: root.transfers.tab === TransfersModel.Finished
            onClicked: root.transfers.clearFinished()
        }

        AppButton {
            kind: AppButton.Kind.Link
            text: qsTr("Resume all")
            visible: root.transfers.tab === TransfersModel.Interrupted
            onClicked: root.transfers.interrupted.resumeAll()
        }
    }
}
