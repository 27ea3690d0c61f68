import QtQuick
import QtQuick.Templates as T

/// A field for one line of text. `hint` is shown while it is empty; `label` is its name for those who cannot see where it
/// stands, and where it is `labelled`, stands above it.
T.TextField {
    id: root

    property string hint: ""
    property string label: hint
    property bool labelled: false
    property bool wrong: false

    color: Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.textRow
    implicitHeight: Theme.controlHeight + topInset
    implicitWidth: Theme.grown(240)
    leftPadding: Theme.spaceMedium
    opacity: enabled ? 1 : Theme.disabledOpacity
    placeholderText: label // not drawn: Qt tells assistants of it, and of nothing else where a secret is entered
    placeholderTextColor: Theme.placeholder
    rightPadding: Theme.spaceMedium
    selectByMouse: true
    selectedTextColor: Theme.onFill
    selectionColor: Theme.accentFill
    topInset: labelled ? caption.height + Theme.spaceTiny : 0
    topPadding: topInset
    verticalAlignment: TextInput.AlignVCenter

    Accessible.name: label
    Accessible.passwordEdit: echoMode === TextInput.Password

    onTextChanged: dropLineBreaks()

    background: InputFrame {
        focused: root.activeFocus
        wrong: root.wrong
    }

    Label {
        id: caption

        Accessible.ignored: true
        font.pixelSize: Theme.textSmall
        font.weight: Font.Medium
        text: root.label
        visible: root.labelled
        width: parent.width
    }

    Label {
        Accessible.ignored: true
        anchors.fill: parent
        anchors.leftMargin: root.leftPadding
        anchors.rightMargin: root.rightPadding
        anchors.topMargin: root.topPadding
        color: root.placeholderTextColor
        font: root.font
        text: root.hint
        verticalAlignment: Text.AlignVCenter
        visible: root.text === "" && root.preeditText === ""
    }

    /// A text that is pasted may bring some along, which a line does not show. Taken out one by one: an assignment would
    /// end what the field is bound to.
    function dropLineBreaks() {
        for (let i = text.length - 1; i >= 0; --i)
            if (/[\n\r\v\f\u0085\u2028\u2029]/.test(text[i]))
                remove(i, i + 1);
    }
}
