import QtQuick
import Palvera.Controls
import Palvera.Shell

/// Opens the program's menu.
IconButton {
    required property ShellModel shell

    symbol: "line.3.horizontal"
    text: qsTr("Menu")
    onClicked: shell.openMenu()
}
