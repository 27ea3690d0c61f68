import QtQuick
import Palvera.Controls

/// A soft shadow around a rounded rectangle.
Item {
    id: root

    property real radius: Theme.radiusLarge
    property int depth: 16 ///< about how far it reaches

    ShadowCanvas {
        anchors.fill: parent
        anchors.margins: -depth
        color: Theme.shadow
        depth: root.depth * 1.25
        radius: root.radius
        strength: Theme.dark ? 0.42 : 0.13
    }
}
