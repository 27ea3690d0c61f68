pragma ComponentBehavior: Bound
import QtQml
import QtQuick
import Palvera.Controls
import Palvera.Panel

/// What can be done with one transfer.
AppMenu {
    id: root

    property TransferList list: null
    property string key: ""
    property int choice: TransferAction.None

    onAboutToShow: {
        choice = TransferAction.None;
        currentIndex = -1;
    }
    // Once it has given the keyboard back.
    onClosed: {
        if (choice !== TransferAction.None)
            list.act(key, choice);
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

    function openFor(list: TransferList, key: string, actions: var, x: real, y: real) {
        root.parent = root.list = list;
        root.key = key;
        title = (list.currentItem as TransferRow)?.name ?? "";
        choices.model = actions;
        popup(parent, x, y);
    }
}
