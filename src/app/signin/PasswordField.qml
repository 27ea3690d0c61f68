import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The password, or the access code, that signs in.
SecureField {
    id: root

    required property LoginModel login

    enabled: !login.busy
    label: qsTr("Password")
    hint: "••••••••••••"
    text: login.password
    onTextEdited: login.password = text
}
