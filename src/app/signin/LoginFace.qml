import QtQuick
import Palvera.SignIn

/// The access-code door.
SignInFace {
    id: root

    complete: login.email.trim() !== "" && login.password !== ""
    firstField: email

    EmailField {
        id: email

        login: root.login
        width: parent.width
        onAccepted: password.forceActiveFocus(Qt.TabFocusReason)
    }

    PasswordField {
        id: password

        login: root.login
        width: parent.width
        onAccepted: root.submit()
    }
}
