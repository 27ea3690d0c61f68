pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T

/// A choice of one among a few. `options` are their texts, `current` is the index of the chosen one.
Rectangle {
    id: root

    required property list<string> options
    property int current: 0
    property string label: ""

    signal chosen(int index)

    activeFocusOnTab: enabled
    color: Theme.field
    implicitHeight: Theme.controlHeight
    implicitWidth: options.length * Theme.grown(96)
    opacity: enabled ? 1 : Theme.disabledOpacity
    radius: Theme.radiusMedium

    Accessible.description: options[current] ?? ""
    Accessible.name: label
    Accessible.role: Accessible.PageTabList
    Keys.onLeftPressed: choose(current - 1)
    Keys.onRightPressed: choose(current + 1)

    function choose(index: int) {
        if (index >= 0 && index < options.length && index !== current)
            chosen(index);
    }

    Rectangle {
        color: Theme.chosen
        height: parent.height - 2 * Theme.focusGap
        radius: root.radius - Theme.focusGap
        visible: root.current >= 0
        width: root.width / root.options.length - 2 * Theme.focusGap
        x: root.current * root.width / root.options.length + Theme.focusGap
        y: Theme.focusGap

        Behavior on x {
            NumberAnimation {
                duration: Theme.quick
                easing.type: Easing.OutCubic
            }
        }
    }

    Row {
        anchors.fill: parent

        Repeater {
            model: root.options

            T.TabButton {
                id: option

                required property int index
                required property string modelData
                readonly property bool current: index === root.current

                checkable: false // it is selected
                focusPolicy: Qt.NoFocus
                height: root.height
                text: modelData
                width: root.width / root.options.length

                Accessible.name: text
                Accessible.selectable: true
                Accessible.selected: current
                Accessible.onPressAction: if (option.enabled)
                    option.clicked()
                onClicked: root.choose(index)

                contentItem: Label {
                    Accessible.ignored: true
                    color: option.current || option.hovered ? Theme.text : Theme.secondary
                    font.pixelSize: Theme.textBody
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: Theme.textCaption
                    font.weight: option.current ? Font.DemiBold : Font.Normal
                    horizontalAlignment: Text.AlignHCenter
                    text: option.text
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }

    FocusRing {
        shown: root.activeFocus
        target: root
    }
}
