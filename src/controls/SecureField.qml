import QtQuick

/// A field for what nobody is to read over one's shoulder, unless it is revealed.
AppTextField {
    id: root

    property bool revealed: false
    property bool capsLock: false ///< as far as the keys tell that were pressed here

    Accessible.description: label // Qt keeps the name of such a field to itself
    echoMode: revealed ? TextInput.Normal : TextInput.Password
    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    passwordCharacter: "•"
    rightPadding: reveal.width + Theme.spaceSmall + (capsHint.visible ? capsHint.width + Theme.spaceSmall : 0)
    onReadOnlyChanged: revealed = false
    Keys.onPressed: event => noteCapsLock(event)

    Label {
        id: capsHint

        Accessible.role: Accessible.AlertMessage
        anchors.right: reveal.left
        anchors.rightMargin: Theme.spaceTiny
        anchors.verticalCenter: reveal.verticalCenter
        color: Theme.warning
        font.pixelSize: Theme.textSmall
        text: qsTr("Caps Lock is on")
        visible: root.capsLock && root.activeFocus
    }

    IconButton {
        id: reveal

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: parent.height - root.topInset
        symbol: root.revealed ? "eye.slash" : "eye"
        symbolColor: Theme.secondary
        text: root.revealed ? qsTr("Hide what is entered") : qsTr("Show what is entered")
        onClicked: root.revealed = !root.revealed
    }

    /// The platform does not say how the key stands. A letter does: it comes large without Shift, or small with it.
    function noteCapsLock(event: var) {
        event.accepted = false;
        const isLetter = event.text.length === 1 && event.text.toLowerCase() !== event.text.toUpperCase();
        if (event.key === Qt.Key_CapsLock)
            capsLock = false; // until the next letter
        else if (isLetter && !(event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier)))
            capsLock = (event.text === event.text.toUpperCase()) !== ((event.modifiers & Qt.ShiftModifier) !== 0);
    }
}
