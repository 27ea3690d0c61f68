import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// What is asked before a file goes to a deliverable, wherever the user is by then.
Item {
    id: root

    required property SenderModel sender
    required property RowDropModel rowDrop

    ConfirmDialog {
        careful: root.rowDrop.replacing
        confirmText: qsTr("Send")
        message: root.rowDrop.message
        symbol: "arrow.up.doc"
        symbolColor: Theme.accent
        title: root.rowDrop.title
        visible: root.rowDrop.title !== ""
        widest: 420 // names of masters are long
        onAboutToShow: root.Window.window.requestActivate() // the files come from another program
        onAccepted: root.rowDrop.confirm()
        onRejected: root.rowDrop.dismiss()
    }

    ConfirmDialog {
        careful: true
        confirmText: qsTr("Send it here")
        message: root.sender.doubtfulMessage
        title: qsTr("Send a full-length file to Textless elements?")
        visible: root.sender.doubtfulMessage !== ""
        onAccepted: root.sender.confirmDoubtful()
        onRejected: root.sender.dismissDoubtful()
    }
}
