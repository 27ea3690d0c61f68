pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls

Item {
    Message {
        action: "Clear the search"
        anchors.centerIn: parent
        detail: "No project is called that, and none has that reference."
        icon: "magnifyingglass"
        title: "Nothing matches"
    }

    ConfirmDialog {
        id: dialog

        confirmText: "Stop"
        destructive: true
        message: "What the platform holds of it is given up, and nothing is left to go on with."
        title: "Stop this transfer?"
        Component.onCompleted: open()
    }
}
