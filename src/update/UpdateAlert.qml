import QtQuick
import Palvera.Controls
import Palvera.Update

/// What came of a check that the user asked for.
ConfirmDialog {
    id: root

    required property AboutModel about

    busy: about.checking
    cancelText: ""
    confirmText: about.checking ? qsTr("Cancel") : qsTr("OK")
    message: about.alertDetail
    symbol: about.upToDate ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
    symbolColor: about.upToDate ? Theme.success : Theme.warning
    title: about.alertTitle
    visible: about.alertTitle !== ""
    onClosed: about.dismissAlert()
}
