import QtQuick
import QtQuick.Window
import Palvera.Controls
import Palvera.App

/// The main window, and that of the transfers.
Window {
    id: root

    required property RootModel model
    property bool dark: false
    readonly property Window panel: transfers
    readonly property int barHeight: Theme.barHeight

    color: Theme.window
    height: 720
    minimumHeight: 560
    minimumWidth: 720
    title: root.model.windowTitle
    width: 1080
    onClosing: close => {
        close.accepted = question.answered || !root.model.transfers.moving;
        if (!close.accepted)
            question.open();
    }

    Connections {
        function onDoubtChanged() {
            if (root.model.transfers.doubtText === "")
                return;
            root.alert(0);
            root.requestActivate();
        }

        target: root.model.transfers
    }

    Binding {
        property: "dark"
        target: Theme
        value: root.dark
    }

    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: root.close()
    }

    Shortcut {
        context: Qt.ApplicationShortcut // in the window of the transfers, too
        sequence: "Ctrl+U"
        onActivated: {
            root.requestActivate();
            root.model.about.checkForUpdates();
        }
    }

    Shortcut {
        sequence: "Ctrl+Shift+T"
        onActivated: {
            root.model.transfers.panelOpen = true;
            transfers.raise();
            transfers.requestActivate();
        }
    }

    FocusKeeper {}

    RootView {
        anchors.fill: parent
        focus: true
        model: root.model
    }

    ConfirmDialog {
        id: question

        property bool answered: false

        cancelText: qsTr("Keep going")
        confirmText: qsTr("Quit")
        destructive: true
        message: qsTr("They wait under Interrupted and go on from where they were.")
        title: qsTr("Quit while files are moving?")
        onAccepted: {
            answered = true;
            root.close();
        }
    }

    TransfersWindow {
        id: transfers

        transfers: root.model.transfers
    }
}
