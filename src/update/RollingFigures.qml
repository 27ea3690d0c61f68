pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls

/// A number whose digits roll to the next ones as they change, but not so often that nobody could read them.
Row {
    id: root

    required property int value
    property string unit: ""
    property alias color: unitLabel.color
    property font font
    property int shown: 0
    readonly property string digits: String(shown)

    Component.onCompleted: shown = value

    Timer {
        interval: 250
        running: root.shown !== root.value
        onTriggered: root.shown = root.value
    }

    Repeater {
        model: root.visible ? root.digits.length : 0

        Item {
            id: place

            required property int index
            readonly property int digit: Number(root.digits.charAt(index))

            clip: true
            height: unitLabel.height
            width: roll.width

            Column {
                id: roll

                y: -place.digit * unitLabel.height

                Behavior on y {
                    NumberAnimation {
                        duration: Theme.quick
                        easing.type: Easing.OutQuad
                    }
                }

                Repeater {
                    model: 10

                    Figures {
                        required property int index

                        Accessible.ignored: true
                        color: root.color
                        font.pixelSize: root.font.pixelSize
                        font.weight: root.font.weight
                        height: unitLabel.height
                        text: index
                    }
                }
            }
        }
    }

    Figures {
        id: unitLabel

        Accessible.ignored: true
        font.pixelSize: root.font.pixelSize
        font.weight: root.font.weight
        text: root.unit
    }
}
