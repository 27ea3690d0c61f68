import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// A link to set another password is asked for.
SignInFace {
    id: root

    action: qsTr("Send me a link")
    actionShown: !login.asked
    busyAction: qsTr("Sending")
    complete: login.email.trim() !== ""
    firstField: email
    text: login.asked ? qsTr("If %1 has an account, a link is on its way. It works once and expires in an hour.").arg(login.email) : qsTr("Give us the email address on your account and we will send a link to set a new one.")
    title: qsTr("Forgotten your password?")
    below: [
        Label {
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Nothing has changed yet. Following the link sets a new password and signs you out everywhere else.")
            visible: root.login.asked
            width: parent.width
            wrapMode: Text.Wrap
        },
        BackLink {
            anchors.horizontalCenter: parent.horizontalCenter
            login: root.login
        }
    ]

    EmailField {
        id: email

        login: root.login
        visible: !root.login.asked
        width: parent.width
        onAccepted: root.submit()
    }
}
