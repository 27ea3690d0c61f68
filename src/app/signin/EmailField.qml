import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The e-mail address that signs in.
AppTextField {
    id: root

    required property LoginModel login

    opacity: login.busy ? Theme.disabledOpacity : 1
    readOnly: login.busy // keeps the keyboard
    inputMethodHints: Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase
    label: qsTr("Work email")
    labelled: true
    hint: qsTr("you@studio.example")
    text: login.email
    onTextEdited: login.email = text
}
