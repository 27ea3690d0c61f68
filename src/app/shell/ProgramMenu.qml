import QtQuick
import Palvera.Controls
import Palvera.Shell

/// The program's own menu.
AppMenu {
    id: root

    required property ShellModel shell

    signal aboutWanted()
    signal checkWanted()
    signal quitWanted()

    property Entry chosen: null

    title: qsTr("Menu")
    onAboutToShow: {
        chosen = null;
        shell.menuOpen = true;
    }
    onClosed: {
        if (chosen)
            chosen.follow();
        shell.menuOpen = false;
    }

    Entry {
        code: qsTr("Ctrl+,")
        text: qsTr("Settings…")
        onFollow: root.shell.sheet = ShellModel.Settings
    }

    Entry {
        code: qsTr("Ctrl+?")
        text: qsTr("Keyboard shortcuts")
        onFollow: root.shell.sheet = ShellModel.Shortcuts
    }

    Entry {
        enabled: root.shell.hasLog
        text: qsTr("Open log")
        onFollow: root.shell.openLog()
    }

    Entry {
        code: qsTr("F1")
        text: qsTr("Help")
        onFollow: root.shell.sheet = ShellModel.Help
    }

    MenuLine {}

    Entry {
        text: qsTr("About Palvera")
        onFollow: root.aboutWanted()
    }

    Entry {
        code: qsTr("Ctrl+U")
        text: qsTr("Check for Updates…")
        onFollow: root.checkWanted()
    }

    MenuLine {}

    Entry {
        code: qsTr("Ctrl+Q")
        text: qsTr("Quit")
        onFollow: root.quitWanted()
    }

    /// Leads somewhere once the menu has closed and given the keyboard back.
    component Entry: MenuRow {
        signal follow()

        onTriggered: root.chosen = this
    }
}
