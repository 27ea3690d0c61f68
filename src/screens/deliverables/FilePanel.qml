import QtQuick
import QtQuick.Dialogs
import Palvera.Deliverables

/// The desktop's dialog for a file or a folder, as long as the deliverable asks for one.
Item {
    id: root

    required property DeliverableModel deliverable

    FileDialog {
        id: file

        title: qsTr("Choose a file to send")
        onAccepted: root.deliverable.pick(selectedFile)
        onRejected: root.deliverable.cancelPicking()
    }

    FolderDialog {
        id: folder

        currentFolder: root.deliverable.proposedFolder
        title: qsTr("Choose where downloads go")
        onAccepted: root.deliverable.pick(selectedFolder)
        onRejected: root.deliverable.cancelPicking()
    }

    Component.onCompleted: {
        if (deliverable.pickingFolder)
            folder.open();
        else
            file.open();
    }
    Component.onDestruction: {
        file.close(); // one that Qt draws would stay
        folder.close();
    }
}
