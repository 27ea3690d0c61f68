import QtQuick
import QtQuick.Window
import Palvera.Controls
import Palvera.App

/// The main window.
Window {
    id: root

    required property RootModel model
    property bool dark: false

    color: Theme.window
    height: 720
    minimumHeight: 560
    minimumWidth: 720
    title: root.model.key.startsWith("org:") ? qsTr("%1 – Palvera").arg(root.model.projects.orgName) : qsTr("Palvera")
    width: 1080

    Binding {
        property: "dark"
        target: Theme
        value: root.dark
    }

    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }

    RootView {
        anchors.fill: parent
        focus: true
        model: root.model
    }
}
