import QtQuick
import QtQuick.Templates as T

/// Shows how far one has scrolled, where there is more than fits.
T.ScrollBar {
    id: root

    implicitHeight: Theme.spaceSmall
    implicitWidth: Theme.spaceSmall
    minimumSize: 0.08
    padding: 1
    visible: size < 1

    Accessible.ignored: true

    contentItem: Rectangle {
        color: Theme.secondary
        implicitHeight: 6
        implicitWidth: 6
        opacity: root.pressed ? 0.8 : root.hovered || root.active ? 0.55 : 0.25
        radius: width / 2

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.quick
            }
        }
    }
}
