import QtQuick
import Palvera.Controls
import Palvera.Panel

/// What is asked before a transfer that was cut off is discarded, and where the file is of one whose file is gone.
Item {
    id: root

    required property InterruptedModel interrupted
    property string key: "" ///< of what is asked about
    property bool locating: false

    anchors.fill: parent

    function askToDiscard(key: string) {
        root.key = key;
        question.title = interrupted.discardTitle(key);
        question.message = interrupted.discardMessage(key);
        question.open();
    }

    function locate(key: string) {
        root.key = key;
        locating = true;
        picker.setSource("LocatePanel.qml", {
            owner: root
        });
    }

    function pick(file: url) {
        picker.source = "";
        interrupted.locate(key, file);
    }

    function cancelPicking() {
        picker.source = "";
        locating = false;
    }

    Connections {
        function onLocated(key, isSame, message) {
            if (!root.locating || key !== root.key)
                return;
            root.cancelPicking();
            const dialog = isSame ? same : other;
            dialog.message = message;
            dialog.open();
        }

        function onFailed(key, why) {
            if (key !== root.key)
                return;
            root.cancelPicking();
            failure.message = why;
            failure.open();
        }

        target: root.interrupted
    }

    ConfirmDialog {
        id: question

        cancelText: qsTr("Keep")
        confirmText: qsTr("Discard")
        destructive: true
        symbol: "trash"
        onAccepted: root.interrupted.discard(root.key)
    }

    ConfirmDialog {
        id: same

        confirmText: qsTr("Go on")
        symbol: "doc.fill"
        symbolColor: Theme.accent
        title: qsTr("Is this the same file?")
        onAccepted: root.interrupted.resumeLocated()
    }

    ConfirmDialog {
        id: other

        careful: true
        confirmText: qsTr("Send it from the start")
        title: qsTr("That is another file")
        onAccepted: root.interrupted.sendLocated()
    }

    ConfirmDialog {
        id: failure

        cancelText: ""
        title: qsTr("That did not work")
    }

    // Made when it is wanted: few files are ever moved.
    Loader {
        id: picker
    }
}
