import QtQuick
import Palvera.Controls
import Palvera.Update

/// What the updater asks and tells, once in a window.
Item {
    id: root

    required property AboutModel about
    required property UpdatePillModel pill

    ConfirmDialog {
        cancelText: qsTr("Not yet")
        careful: true
        confirmText: qsTr("Restart")
        message: root.pill.question
        title: qsTr("Restart Palvera now?")
        visible: root.pill.confirming
        onAccepted: root.pill.confirmRestart()
        onRejected: root.pill.cancel()
    }

    UpdateAlert {
        about: root.about
    }

    AboutSheet {
        about: root.about
    }
}
