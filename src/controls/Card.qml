import QtQuick

/// A raised surface that holds what belongs together.
Item {
    id: root

    default property alias content: body.data
    property alias radius: surface.radius

    Shadow {
        anchors.fill: surface
        radius: surface.radius
    }

    Rectangle {
        id: surface

        anchors.fill: parent
        border.color: Theme.line
        border.width: 1
        color: Theme.surface
        radius: Theme.radiusLarge
    }

    Item {
        id: body

        anchors.fill: parent
    }
}
