import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The password, or the access code, that signs in.
SecureField {
    id: root

    required property LoginModel login

    opacity: login.busy ? Theme.disabledOpacity : 1
    readOnly: login.busy // keeps the keyboard
    label: qsTr("Password")
    labelled: true
    text: login.password
    onTextEdited: login.password = text
}
