pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Window
import Palvera.Controls
import Palvera.Shell
import Palvera.App

/// The main window, and that of the transfers.
Window {
    id: root

    required property RootModel model
    property bool dark: false
    property bool still: false
    readonly property Window panel: transfers
    readonly property int barHeight: Theme.barHeight
    property bool leaving: false ///< for good, not just closing
    property ProgramMenu menu: null
    property var sheets: ({}) ///< those that have been shown, by their files

    /// Made when it is first wanted, as every sheet is.
    function showMenu() {
        if (!menu) {
            menu = Qt.createComponent("qrc:/qt/qml/Palvera/Shell/ProgramMenu.qml").createObject(screens, {
                shell: model.shell
            });
            menu.aboutWanted.connect(() => model.about.open = true);
            menu.checkWanted.connect(() => model.about.checkForUpdates());
            menu.quitWanted.connect(() => root.leave());
        }
        menu.popup(screens, screens.width - menu.width - Theme.spaceSmall, Theme.barHeight);
    }

    /// Ends the program, unless the user would rather not.
    function leave() {
        leaving = true;
        if (!visible)
            show(); // there may be a question
        close();
    }

    function showSheet() {
        const files = {
            [ShellModel.Settings]: "SettingsSheet.qml",
            [ShellModel.Shortcuts]: "ShortcutsSheet.qml",
            [ShellModel.Help]: "HelpSheet.qml"
        };
        const file = files[model.shell.sheet];
        if (file && !sheets[file])
            sheets[file] = Qt.createComponent("qrc:/qt/qml/Palvera/Shell/" + file).createObject(screens, {
                shell: model.shell
            });
    }

    color: Theme.window
    height: 720
    minimumHeight: 560
    minimumWidth: 720
    title: root.model.windowTitle
    width: 1080
    onClosing: close => {
        const stays = root.model.shell.stays && !leaving;
        close.accepted = !stays && (question.answered || !root.model.transfers.moving);
        leaving = false;
        if (stays)
            hide();
        else if (!close.accepted)
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

    Connections {
        function onAnnounced(text: string) {
            announcer.say(text);
        }

        target: root.model
    }

    Connections {
        function onMenuWanted() {
            root.showMenu();
        }

        function onSheetChanged() {
            root.showSheet();
        }

        target: root.model.shell
    }

    Binding {
        property: "still"
        target: Theme
        value: root.still
    }

    Binding {
        property: "scale"
        target: Theme
        value: root.model.textSize.scale
    }

    // In the window of the transfers, too.
    Shortcut {
        context: Qt.ApplicationShortcut
        sequences: ["Ctrl++", "Ctrl+="]
        onActivated: root.model.textSize.grow()
    }

    Shortcut {
        context: Qt.ApplicationShortcut
        sequence: "Ctrl+-"
        onActivated: root.model.textSize.shrink()
    }

    Shortcut {
        context: Qt.ApplicationShortcut
        sequence: "Ctrl+0"
        onActivated: root.model.textSize.reset()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: root.leave()
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: root.close()
    }

    Shortcut {
        sequences: ["Alt+Left", "Back"]
        onActivated: root.model.goBack()
    }

    Shortcut {
        sequence: "F5"
        onActivated: root.model.reload()
    }

    Shortcut {
        sequence: "F10"
        onActivated: root.model.shell.openMenu()
    }

    SheetShortcut {
        sequence: "Ctrl+,"
        sheet: ShellModel.Settings
    }

    SheetShortcut {
        sequence: "Ctrl+?"
        sheet: ShellModel.Shortcuts
    }

    SheetShortcut {
        sequence: "F1"
        sheet: ShellModel.Help
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
        id: screens

        anchors.fill: parent
        focus: true
        model: root.model
    }

    Announcer {
        id: announcer
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
            root.leave();
        }
    }

    component SheetShortcut: Shortcut {
        required property int sheet

        context: Qt.ApplicationShortcut // in the window of the transfers, too
        onActivated: {
            root.requestActivate();
            root.model.shell.sheet = sheet;
        }
    }

    TransfersWindow {
        id: transfers

        transfers: root.model.transfers
    }
}
