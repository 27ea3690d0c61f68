pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Panel

/// Every transfer: what moves, what is over, and what an earlier run left unfinished.
FocusScope {
    id: root

    required property TransfersModel transfers
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
        options: [qsTr("In flight"), qsTr("Finished"), qsTr("Interrupted")]
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
            visible: root.transfers.tab === TransfersModel.InFlight
            onStopping: (key, title, message) => root.ask(key, title, message)
        }

        TransferList {
            anchors.fill: parent
            label: qsTr("Finished")
            model: root.transfers.finished
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
            visible: [root.transfers.inFlight.count, root.transfers.finished.count, root.transfers.interrupted.count][root.transfers.tab] === 0
            width: parent.width - 2 * Theme.spaceLarge
        }
    }

    Rectangle {
        id: footer

        readonly property bool finished: root.transfers.tab === TransfersModel.Finished

        anchors.bottom: parent.bottom
        color: Theme.bar
        height: clear.height + 20
        visible: finished ? root.transfers.finished.count > 0 : root.transfers.tab === TransfersModel.Interrupted && root.transfers.interrupted.count > 0
        width: parent.width

        Rectangle {
            color: Theme.line
            height: 1
            width: parent.width
        }

        AppButton {
            id: clear

            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            kind: AppButton.Kind.Link
            text: footer.finished ? qsTr("Clear") : qsTr("Resume all")
            onClicked: footer.finished ? root.transfers.clearFinished() : root.transfers.interrupted.resumeAll()
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
        onAccepted: root.transfers.stop(root.stopping)
    }

    function ask(key: string, title: string, message: string) {
        stopping = key;
        question.title = title;
        question.message = message;
        question.open();
    }
}
