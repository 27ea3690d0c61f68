import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Palvera.Controls

/// A text of any length: what has more than `mostLines`, or would take more than a third of the window, is scrolled,
/// with the arrow keys too.
Flickable {
    id: root

    property int mostLines: 8
    property int role: Accessible.StaticText
    property alias color: words.color
    property alias horizontalAlignment: words.horizontalAlignment
    property alias text: words.text

    activeFocusOnTab: interactive
    boundsBehavior: Flickable.StopAtBounds
    clip: interactive
    contentHeight: words.height
    height: implicitHeight
    implicitHeight: Math.min(words.height, Math.max(1, Math.min(mostLines, Math.floor(Window.height / 3 / line.height))) * line.height)
    interactive: contentHeight > implicitHeight
    onTextChanged: contentY = 0

    T.ScrollBar.vertical: AppScrollBar {}
    Keys.onPressed: event => {
        const steps = {
            [Qt.Key_Down]: line.height,
            [Qt.Key_Up]: -line.height,
            [Qt.Key_PageDown]: height,
            [Qt.Key_PageUp]: -height
        };
        const step = steps[event.key];
        event.accepted = interactive && step !== undefined;
        if (event.accepted)
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + step));
    }

    Label {
        id: words

        width: root.width - x - Theme.spaceSmall // beside the scroll bar
        wrapMode: Text.Wrap
        x: horizontalAlignment === Text.AlignHCenter ? Theme.spaceSmall : 0
        Accessible.role: root.role
    }

    Label {
        id: line

        text: " "
        visible: false
        wrapMode: Text.Wrap
    }

    FocusRing {
        parent: root
        radius: Theme.radiusSmall
        shown: root.activeFocus
        target: root
    }
}
