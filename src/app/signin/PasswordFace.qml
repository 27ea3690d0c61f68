import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The password of the e-mail address that was entered.
SignInFace {
    id: root

    complete: login.password !== ""
    firstField: password
    below: AppButton {
        anchors.horizontalCenter: parent.horizontalCenter
        enabled: !root.login.busy
        kind: AppButton.Kind.Link
        text: qsTr("Forgotten your password?")
        onClicked: root.login.forgotPassword()
    }

    Item {
        height: change.height
        width: parent.width

        Label {
            anchors.left: parent.left
            anchors.right: change.left
            anchors.rightMargin: Theme.spaceSmall
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            text: root.login.email
        }

        AppButton {
            id: change

            anchors.right: parent.right
            enabled: !root.login.busy
            kind: AppButton.Kind.Link
            text: qsTr("Change")
            onClicked: root.login.changeEmail()
        }
    }

    PasswordField {
        id: password

        login: root.login
        width: parent.width
        onAccepted: root.submit()
    }
}
