pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Window
import Palvera.Controls
import Palvera.Panel

/// Every transfer: what moves, what is over, and what an earlier run left unfinished.
FocusScope {
    id: root

    required property TransfersModel transfers
    readonly property int count: [transfers.inFlight.count, transfers.finished.count, transfers.interrupted.count][transfers.tab]
    readonly property list<Item> lists: [moving, finished, interrupted]
    property TransferMenu menu: null ///< made when it is first wanted
    property string stopping: "" ///< key of the transfer that the user is asked about; empty for all

    implicitHeight: Theme.grown(240)
    implicitWidth: Theme.grown(320)
    onActiveFocusChanged: {
        if (activeFocus && Window.activeFocusItem === root) // the window has just come
            (count === 0 ? tabs : lists[transfers.tab]).forceActiveFocus(Qt.OtherFocusReason);
    }

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
            id: moving

            anchors.fill: parent
            label: qsTr("In flight")
            model: root.transfers.inFlight
            transfers: root.transfers
            visible: root.transfers.tab === TransfersModel.InFlight
            onMenuWanted: (key, x, y) => root.openMenu(moving, key, x, y)
            onStopping: key => root.ask(key)
        }

        TransferList {
            id: finished

            anchors.fill: parent
            label: qsTr("Finished")
            model: root.transfers.finished
            transfers: root.transfers
            visible: root.transfers.tab === TransfersModel.Finished
            onMenuWanted: (key, x, y) => root.openMenu(finished, key, x, y)
        }

        RowList {
            id: interrupted

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
        onStopping: root.ask("")
    }

    InterruptedDialogs {
        id: interruptedDialogs

        interrupted: root.transfers.interrupted
    }

    ConfirmDialog {
        id: question

        cancelText: qsTr("Keep going")
        confirmText: root.stopping === "" ? qsTr("Stop all") : qsTr("Stop")
        destructive: true
        onAccepted: root.stopping === "" ? root.transfers.stopAll() : root.transfers.perform(root.stopping, TransferAction.Stop)
    }

    /// Before that transfer is stopped, or all of them.
    function ask(key: string) {
        stopping = key;
        question.title = key === "" ? qsTr("Stop all transfers?") : transfers.stopTitle(key);
        question.message = key === "" ? transfers.stopAllMessage() : transfers.stopMessage(key);
        question.open();
    }

    function openMenu(list: TransferList, key: string, x: real, y: real) {
        if (!menu)
            menu = Qt.createComponent("TransferMenu.qml").createObject(root);
        menu.openFor(list, key, transfers.actions(key), x, y);
    }
}
