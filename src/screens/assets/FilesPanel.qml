import QtQuick
import QtQuick.Dialogs
import Palvera.Assets

/// The desktop's dialog for files or for a folder, as long as the screen asks for one.
Item {
    id: root

    required property AssetsModel assets

    FileDialog {
        id: files

        fileMode: FileDialog.OpenFiles
        title: qsTr("Choose files to add to Uploads")
        onAccepted: root.assets.pick(selectedFiles)
        onRejected: root.assets.cancelPicking()
    }

    FolderDialog {
        id: folder

        currentFolder: root.assets.proposedFolder
        title: qsTr("Choose where downloads go")
        onAccepted: root.assets.pick([selectedFolder])
        onRejected: root.assets.cancelPicking()
    }

    Component.onCompleted: {
        if (assets.pickingFolder)
            folder.open();
        else
            files.open();
    }
    Component.onDestruction: {
        files.close(); // one that Qt draws would stay
        folder.close();
    }
}
