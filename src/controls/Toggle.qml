import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// Something that is on or off. `text` says what, to assistants.
T.Switch {
    id: root

    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.symbolLarge + Theme.focusGap
    implicitWidth: 2 * Theme.symbolLarge - Theme.focusGap
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.name: text
    Accessible.role: Accessible.CheckBox
    Accessible.onPressAction: root.change()
    Accessible.onToggleAction: root.change()
    Keys.onEnterPressed: change()
    Keys.onReturnPressed: change()

    function change() {
        toggle();
        toggled();
    }

    indicator: Rectangle {
        anchors.fill: parent
        border.color: root.checked ? Theme.accentFill : Theme.secondary
        color: root.checked ? Theme.accentFill : Theme.field
        radius: height / 2

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            color: root.checked ? Theme.onFill : Theme.secondary
            height: parent.height - 3 * Theme.focusGap
            radius: height / 2
            width: height
            x: root.checked ? parent.width - width - 1.5 * Theme.focusGap : 1.5 * Theme.focusGap

            Behavior on x {
                NumberAnimation {
                    duration: Theme.quick
                }
            }
        }

        FocusRing {
            radius: parent.radius + Theme.focusGap + Theme.focusWidth
            shown: root.visualFocus
            target: parent
        }
    }
}
