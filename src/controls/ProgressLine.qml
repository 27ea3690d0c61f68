import QtQuick

/// How much of something is done; a sweep where that is not known.
Rectangle {
    id: root

    property real value: 0 ///< from 0 to 1; below 0 it is not known
    property color fill: Theme.accent
    property string label: ""
    readonly property bool known: value >= 0

    clip: true
    color: Theme.field
    implicitHeight: Theme.spaceTiny + 1
    implicitWidth: 240
    radius: height / 2

    // A little is added since 29 of 100 is 28.999… percent in a double: less than a byte of the largest file.
    Accessible.name: known ? qsTr("%1, %2 percent").arg(label).arg(Math.floor(value * 100 + 1e-12)) : label
    Accessible.role: Accessible.ProgressBar

    Rectangle {
        color: root.fill
        height: parent.height
        radius: root.radius
        visible: root.known && width > 0
        width: Math.round(parent.width * Math.min(1, Math.max(0, root.value)))
    }

    Rectangle {
        id: sweep

        color: root.fill
        height: parent.height
        radius: root.radius
        visible: !root.known
        width: parent.width * 0.3

        NumberAnimation on x {
            duration: 1400
            easing.type: Easing.InOutQuad
            from: -sweep.width
            loops: Animation.Infinite
            running: sweep.visible && root.visible
            to: root.width
        }
    }
}
