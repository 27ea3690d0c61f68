import QtQuick
import QtQuick.Templates as T
import QtQuick.Window

/// A page that is scrolled where it is higher than its place, and scrolls by itself to what gets the keyboard and to news.
Flickable {
    id: root

    readonly property Item focused: Window.activeFocusItem
    property Item news: null ///< what has just come

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    interactive: contentHeight > height
    onContentHeightChanged: {
        if (news)
            reveal(news);
        news = null;
    }
    onFocusedChanged: reveal(focused)

    T.ScrollBar.vertical: AppScrollBar {}

    function reveal(item: Item): void {
        let ancestor = item;
        while (ancestor && ancestor !== contentItem)
            ancestor = ancestor.parent;
        if (!ancestor)
            return;
        const top = item.mapToItem(contentItem, 0, 0).y - Theme.spaceLarge;
        const bottom = top + item.height + 2 * Theme.spaceLarge;
        contentY = Math.max(0, Math.min(top, Math.max(contentY, Math.min(bottom, contentHeight) - height)));
    }
}
