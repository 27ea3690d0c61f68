import QtQuick
import QtQuick.Window

/// Makes the window that it is placed in float: above all others, and moved by its background. Shows nothing itself.
Item {
    id: root

    anchors.fill: parent
    z: -1
    Component.onCompleted: Window.window.flags |= Qt.WindowStaysOnTopHint

    DragHandler {
        target: null
        onActiveChanged: {
            if (active)
                root.Window.window.startSystemMove();
        }
    }
}
