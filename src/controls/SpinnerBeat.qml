pragma Singleton
import QtQuick

/// One beat for every spinner that turns, so that many of them have the window drawn no more often than one.
QtObject {
    id: root

    property int spinners: 0
    property int step: 0

    // Whole steps: a turn that never rests would have the window drawn sixty times a second.
    readonly property Timer timer: Timer {
        interval: 110
        repeat: true
        running: root.spinners > 0
        onTriggered: root.step = root.step + 1
    }
}
