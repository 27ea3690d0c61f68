pragma ComponentBehavior: Bound
import QtQuick

/// Something goes on, nobody knows for how long.
Item {
    id: root

    property color color: Theme.secondary
    property bool running: true
    readonly property int spokes: 8
    property int step: 0

    implicitHeight: Theme.symbolHuge
    implicitWidth: Theme.symbolHuge

    Accessible.name: qsTr("Busy")
    Accessible.role: Accessible.Indicator

    // Whole steps: a turn that never rests would have the window drawn sixty times a second.
    Timer {
        interval: 110
        repeat: true
        running: root.running && root.visible
        onTriggered: root.step = (root.step + 1) % root.spokes
    }

    Repeater {
        model: root.spokes

        Rectangle {
            id: spoke

            required property int index

            antialiasing: true
            color: root.color
            height: root.height * 0.28
            opacity: 1 - 0.75 * ((root.step - index + root.spokes) % root.spokes) / root.spokes
            radius: width / 2
            transformOrigin: Item.Bottom
            width: Math.max(1.5, root.width * 0.09)
            x: (root.width - width) / 2

            transform: Rotation {
                angle: spoke.index * 360 / root.spokes
                origin.x: spoke.width / 2
                origin.y: root.height / 2
            }
        }
    }
}
