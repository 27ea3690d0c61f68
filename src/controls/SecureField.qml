import QtQuick

/// A field for what nobody is to read over one's shoulder, unless it is revealed.
AppTextField {
    id: root

    property bool revealed: false

    Accessible.description: label // Qt keeps the name of such a field to itself
    echoMode: revealed ? TextInput.Normal : TextInput.Password
    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    passwordCharacter: "•"
    rightPadding: reveal.width + Theme.spaceSmall
    onEnabledChanged: revealed = false

    IconButton {
        id: reveal

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        height: parent.height
        symbol: root.revealed ? "eye.slash" : "eye"
        symbolColor: Theme.secondary
        text: root.revealed ? qsTr("Hide what is entered") : qsTr("Show what is entered")
        onClicked: root.revealed = !root.revealed
    }
}
