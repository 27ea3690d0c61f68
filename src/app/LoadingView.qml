import QtQuick
import Palvera.Controls
import Palvera.App

/// While nobody knows yet who is signed in.
FocusScope {
    id: root

    required property RootModel model

    Column {
        anchors.centerIn: parent
        spacing: Theme.spaceLarge

        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Theme.secondary
            opacity: slow.running ? 0 : 1
            text: qsTr("Waiting for Palvera to answer…")
        }
    }

    // A text that flashes by at every start would tell nothing.
    Timer {
        id: slow

        interval: 3000
        running: true
    }
}
