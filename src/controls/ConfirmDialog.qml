import QtQuick
import Palvera.Controls

/// A question that must be answered first. Escape cancels. What it holds is made when it is first asked.
AppDialog {
    id: root

    property string symbol: "exclamationmark.triangle.fill"
    property color symbolColor: destructive ? Theme.danger : Theme.warning
    property string message: ""
    property string confirmText: qsTr("OK")
    property string cancelText: qsTr("Cancel") ///< empty where there is nothing to choose
    property bool destructive: false
    property bool careful: destructive ///< the keyboard is at the answer that does nothing
    property bool busy: false ///< the answer to something is waited for

    onAboutToShow: {
        if (!body.item)
            body.setSource("ConfirmBody.qml", {
                dialog: root
            });
    }

    contentItem: Loader {
        id: body
    }
}
