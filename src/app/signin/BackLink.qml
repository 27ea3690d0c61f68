import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// Leads back to where a sign-in begins.
AppButton {
    required property LoginModel login

    enabled: !login.busy
    kind: AppButton.Kind.Link
    symbol: "chevron.left"
    text: qsTr("Back to sign in")
    onClicked: login.backToSignIn()
}
