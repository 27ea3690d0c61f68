import QtQuick
import QtQuick.Dialogs
import Palvera.Panel

/// The desktop's dialog for a file that is no longer where it was. Opens when it is made.
Item {
    id: root

    required property InterruptedDialogs owner

    FileDialog {
        id: dialog

        title: qsTr("Where is the file?")
        onAccepted: root.owner.pick(selectedFile)
        onRejected: root.owner.cancelPicking()
    }

    Component.onCompleted: dialog.open()
    Component.onDestruction: dialog.close() // one that Qt draws would stay
}
