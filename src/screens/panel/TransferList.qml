pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Panel

/// Transfers one below the other.
RowList {
    id: root

    signal stopping(string key, string title, string message)

    delegate: TransferRow {
        id: row

        required property string key
        required property int index
        required property string stopTitle
        required property string stopMessage

        separated: index < root.count - 1
        width: ListView.view.width
        onStopping: root.stopping(key, stopTitle, stopMessage)
    }
}
