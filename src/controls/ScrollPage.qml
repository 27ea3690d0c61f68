import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// A page that is scrolled where it is higher than its place, and scrolls by itself to what gets the keyboard.
Flickable {
    id: root

    readonly property Item focused: Window.activeFocusItem

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    interactive: contentHeight > height
    onFocusedChanged: reveal()

    T.ScrollBar.vertical: AppScrollBar {}

    function reveal(): void {
        let ancestor = focused;
        while (ancestor && ancestor !== contentItem)
            ancestor = ancestor.parent;
        if (!ancestor)
            return;
        const top = focused.mapToItem(contentItem, 0, 0).y - Theme.spaceLarge;
        const bottom = top + focused.height + 2 * Theme.spaceLarge;
        contentY = Math.max(0, Math.min(top, Math.max(contentY, Math.min(bottom, contentHeight) - height)));
    }
}
