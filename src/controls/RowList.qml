import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// A list of rows that is walked with the keyboard: arrows, page keys, Home and End; Enter presses the current row.
ListView {
    id: root

    property string label: ""
    readonly property int page: Math.max(1, Math.floor(height / Theme.rowHeight) - 1)

    activeFocusOnTab: count > 0 // an empty list shows nothing that has the keyboard
    boundsBehavior: Flickable.StopAtBounds
    cacheBuffer: 0 // rows ahead are made in idle moments; Qt 6.4 loses track of them when the list gets shorter then
    clip: true
    highlightMoveDuration: 0
    keyNavigationEnabled: true
    reuseItems: true

    Accessible.name: label
    Accessible.role: Accessible.List
    Keys.onPressed: event => {
        const steps = {
            [Qt.Key_PageDown]: page,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_Home]: -count,
            [Qt.Key_End]: count
        };
        const step = steps[event.key];
        event.accepted = step !== undefined && count > 0;
        if (event.accepted)
            currentIndex = Math.min(count - 1, Math.max(0, currentIndex + step));
    }
    // Whoever comes back to it begins at the row, not at the last of its buttons.
    onActiveFocusChanged: {
        if (!activeFocus && currentItem)
            currentItem.focus = true;
    }
    onCountChanged: {
        if (currentIndex < 0 && count > 0)
            currentIndex = 0;
    }

    T.ScrollBar.vertical: AppScrollBar {}

    RowOrder {
        rows: root.contentItem
    }

    /// To the first row, for rows that are others than before. Lets go of the current one first: Qt 6.4 leaves it where
    /// it was painted when rows come in before it while it is not among those seen.
    function restart() {
        currentIndex = -1;
        positionViewAtBeginning();
        currentIndex = count > 0 ? 0 : -1;
    }
}
