pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Panel

/// Every transfer: what moves, what is over, and what an earlier run left unfinished.
FocusScope {
    id: root

    required property TransfersModel transfers
    readonly property int count: [transfers.inFlight.count, transfers.finished.count, transfers.interrupted.count][transfers.tab]
    property string stopping: "" ///< key of the transfer that the user is asked about

    implicitHeight: 240
    implicitWidth: 320

    Segmented {
        id: tabs

        anchors.left: parent.left
        anchors.margins: 10
        anchors.right: parent.right
        anchors.top: parent.top
        current: root.transfers.tab
        label: qsTr("Transfers")
        options: [root.transfers.tabTitles[0], root.transfers.tabTitles[1], root.transfers.tabTitles[2]]
        onChosen: index => root.transfers.tab = index
    }

    Rectangle {
        id: line

        anchors.top: tabs.bottom
        anchors.topMargin: 10
        color: Theme.line
        height: 1
        width: parent.width
    }

    Item {
        id: content

        anchors.bottom: footer.visible ? footer.top : parent.bottom
        anchors.top: line.bottom
        width: parent.width

        TransferList {
            anchors.fill: parent
            label: qsTr("In flight")
            model: root.transfers.inFlight
            transfers: root.transfers
            visible: root.transfers.tab === TransfersModel.InFlight
            onStopping: key => root.ask(key)
        }

        TransferList {
            anchors.fill: parent
            label: qsTr("Finished")
            model: root.transfers.finished
            transfers: root.transfers
            visible: root.transfers.tab === TransfersModel.Finished
        }

        RowList {
            anchors.fill: parent
            label: qsTr("Interrupted")
            model: root.transfers.interrupted.rows
            visible: root.transfers.tab === TransfersModel.Interrupted

            delegate: InterruptedRow {
                required property string key

                width: ListView.view.width
                onDiscarded: interruptedDialogs.askToDiscard(key)
                onLocated: interruptedDialogs.locate(key)
                onResumed: root.transfers.interrupted.resume(key)
            }
        }

        Message {
            anchors.centerIn: parent
            icon: root.transfers.tab === TransfersModel.Interrupted ? "checkmark.circle" : "arrow.up.arrow.down"
            title: [qsTr("Nothing moving"), qsTr("Nothing finished yet"), qsTr("Nothing interrupted")][root.transfers.tab]
            visible: root.count === 0
            width: parent.width - 2 * Theme.spaceLarge
        }
    }

    TransfersFooter {
        id: footer

        anchors.bottom: parent.bottom
        transfers: root.transfers
        visible: root.count > 0
        width: parent.width
        onStopping: {
            stopAll.message = root.transfers.stopAllMessage();
            stopAll.open();
        }
    }

    InterruptedDialogs {
        id: interruptedDialogs

        interrupted: root.transfers.interrupted
    }

    ConfirmDialog {
        id: question

        cancelText: qsTr("Keep going")
        confirmText: qsTr("Stop")
        destructive: true
        onAccepted: root.transfers.perform(root.stopping, TransferAction.Stop)
    }

    ConfirmDialog {
        id: stopAll

        cancelText: qsTr("Keep going")
        confirmText: qsTr("Stop all")
        destructive: true
        title: qsTr("Stop all transfers?")
        onAccepted: root.transfers.stopAll()
    }

    function ask(key: string) {
        stopping = key;
        question.title = transfers.stopTitle(key);
        question.message = transfers.stopMessage(key);
        question.open();
    }
}
