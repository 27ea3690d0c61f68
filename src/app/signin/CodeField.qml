import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// A code that somebody or something made for this sign-in.
AppTextField {
    id: root

    required property LoginModel login

    opacity: login.busy ? Theme.disabledOpacity : 1
    readOnly: login.busy // keeps the keyboard
    font.letterSpacing: text === "" ? 0 : 3
    inputMethodHints: Qt.ImhDigitsOnly
    text: login.code
    onTextEdited: login.code = text
}
