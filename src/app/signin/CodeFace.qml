import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The code that was sent by e-mail, or the one that the authenticator shows.
SignInFace {
    id: root

    readonly property bool byEmail: login.face === LoginModel.Verify

    busyAction: qsTr("Checking")
    complete: /[^\s-]/.test(login.code)
    firstField: code
    text: byEmail ? qsTr("We sent a six-digit code to %1. Enter it here to confirm the address is yours.").arg(login.email) : qsTr("Enter the code from your authenticator app.")
    title: byEmail ? qsTr("Check your email") : qsTr("One more step")
    below: [
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.spaceTiny
            visible: root.byEmail

            Label {
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.secondary
                horizontalAlignment: Text.AlignHCenter
                lineHeight: 1 // as that of the link beside it
                text: root.login.resent ? qsTr("%1 %2").arg(qsTr("Nothing arrived?")).arg(qsTr("Another code is on its way.")) : qsTr("Nothing arrived?")
                width: Math.min(implicitWidth, root.width)
                wrapMode: Text.Wrap
            }

            AppButton {
                anchors.verticalCenter: parent.verticalCenter
                enabled: !root.login.busy
                kind: AppButton.Kind.Link
                text: qsTr("Send another code")
                visible: !root.login.resent
                onClicked: root.login.resendCode()
            }
        },
        BackLink {
            anchors.horizontalCenter: parent.horizontalCenter
            login: root.login
        }
    ]

    CodeField {
        id: code

        login: root.login
        hint: root.byEmail ? qsTr("Code from the email") : qsTr("Code from the app")
        width: parent.width
        onAccepted: root.submit()
    }
}
