pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.Panel

/// Transfers one below the other.
RowList {
    id: root

    required property TransfersModel transfers

    signal stopping(string key)
    signal menuWanted(string key, real x, real y)

    delegate: TransferRow {
        id: row

        separated: index < root.count - 1
        width: ListView.view.width
        onActiveFocusChanged: {
            if (activeFocus)
                root.currentIndex = index;
        }
        onChosen: action => root.act(key, action)
        onDragged: y => root.drag(row, row.y + y)
        onMainChosen: root.act(key, root.transfers.mainAction(key))
        onMenuWanted: (x, y) => root.menuWanted(key, x, row.y - root.contentY + y)
        onStepped: rows => root.transfers.moveTo(key, index + rows)
    }

    function act(key: string, action: int) {
        if (action === TransferAction.Stop)
            stopping(key);
        else
            transfers.perform(key, action);
    }

    /// Lets a row that is dragged to `y` take the place of the one there, once it would be under the pointer.
    function drag(row: TransferRow, y: real) {
        const at = indexAt(width / 2, y);
        const other = itemAtIndex(at);
        if (!other || other === row)
            return;
        const fits = at > row.index ? y >= other.y + other.height - row.height : y <= other.y + row.height;
        if (!fits)
            return;
        transfers.moveTo(row.key, at);
        positionViewAtIndex(at, ListView.Contain);
    }
}
