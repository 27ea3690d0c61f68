pragma ComponentBehavior: Bound
import QtQuick

/// A soft shadow around a rounded rectangle, in layers, which every renderer draws alike.
Item {
    id: root

    property real radius: Theme.radiusLarge
    property int depth: 16 ///< how far it reaches
    property real strength: Theme.dark ? 0.42 : 0.13 ///< close to the rectangle, from 0 to 1
    readonly property int layers: 8

    Repeater {
        model: root.layers

        // A translucent colour, not an opacity: the software renderer draws the corners of the latter square.
        Rectangle {
            required property int index
            readonly property real reach: root.depth * Math.pow((index + 1) / root.layers, 1.6)

            anchors.bottomMargin: -reach - root.depth / 4
            anchors.fill: parent
            anchors.margins: -reach
            anchors.topMargin: -reach + root.depth / 4
            color: Qt.alpha(Theme.shadow, root.strength / root.layers)
            radius: root.radius + reach
        }
    }
}
