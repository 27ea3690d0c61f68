pragma ComponentBehavior: Bound
import QtQml
import QtQuick
import Palvera.Controls
import Palvera.Panel

/// What can be done with one transfer.
AppMenu {
    id: root

    property string key: ""
    property int choice: TransferAction.None

    /// Once it has closed and given the keyboard back.
    signal chosen(string key, int action)

    onAboutToShow: choice = TransferAction.None
    onClosed: {
        if (choice !== TransferAction.None)
            chosen(key, choice);
    }

    Instantiator {
        id: choices

        delegate: MenuRow {
            required property var modelData

            text: modelData.text
            onTriggered: root.choice = modelData.action
        }

        onObjectAdded: (index, object) => root.insertItem(index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }

    function openFor(key: string, actions: var, x: real, y: real) {
        root.key = key;
        choices.model = actions;
        popup(parent, x, y);
    }
}
