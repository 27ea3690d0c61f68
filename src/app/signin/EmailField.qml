import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The e-mail address that signs in.
AppTextField {
    id: root

    required property LoginModel login

    enabled: !login.busy
    inputMethodHints: Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase
    label: qsTr("Work email")
    hint: qsTr("you@studio.example")
    text: login.email
    onTextEdited: login.email = text
}
