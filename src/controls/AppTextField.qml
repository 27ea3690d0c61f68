import QtQuick
import QtQuick.Templates as T

/// A field for one line of text. `label` is its name for those who cannot see where it stands.
T.TextField {
    id: root

    property string label: placeholderText
    property bool wrong: false

    color: Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.textRow
    implicitHeight: Theme.controlHeight
    implicitWidth: 240
    leftPadding: Theme.spaceMedium
    opacity: enabled ? 1 : Theme.disabledOpacity
    placeholderTextColor: Theme.placeholder
    rightPadding: Theme.spaceMedium
    selectByMouse: true
    selectedTextColor: Theme.onFill
    selectionColor: Theme.accentFill
    verticalAlignment: TextInput.AlignVCenter

    Accessible.name: label
    Accessible.passwordEdit: echoMode === TextInput.Password

    background: InputFrame {
        focused: root.activeFocus
        wrong: root.wrong
    }

    Label {
        Accessible.ignored: true
        anchors.fill: parent
        anchors.leftMargin: root.leftPadding
        anchors.rightMargin: root.rightPadding
        color: root.placeholderTextColor
        font: root.font
        text: root.placeholderText
        verticalAlignment: Text.AlignVCenter
        visible: root.text === "" && root.preeditText === ""
    }
}
