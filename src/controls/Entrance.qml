import QtQuick

/// Brings `target` in: it appears. Once, when it is completed.
ParallelAnimation {
    id: root

    required property Item target
    property int pause: 0 ///< before it begins, so that several come one after the other

    running: true

    SequentialAnimation {
        PropertyAction {
            property: "opacity"
            target: root.target
            value: Theme.entrance > 0 ? 0 : 1
        }

        PauseAnimation {
            duration: Theme.entrance > 0 ? root.pause : 0
        }

        NumberAnimation {
            duration: Theme.entrance
            easing.type: Easing.OutCubic
            property: "opacity"
            target: root.target
            to: 1
        }
    }
}
