pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The work e-mail door, with the other ways in below it.
SignInFace {
    id: root

    complete: login.email.trim() !== ""
    firstField: email
    below: [
        Item {
            height: or.height
            width: parent.width

            Rectangle {
                anchors.left: parent.left
                anchors.right: or.left
                anchors.rightMargin: Theme.spaceMedium
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.line
                height: 1
            }

            Label {
                id: or

                anchors.horizontalCenter: parent.horizontalCenter
                color: Theme.secondary
                font.pixelSize: Theme.textSmall
                text: qsTr("or")
            }

            Rectangle {
                anchors.left: or.right
                anchors.leftMargin: Theme.spaceMedium
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.line
                height: 1
            }
        },
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.spaceMedium
            visible: root.login.social.length > 0

            Repeater {
                model: root.login.social

                IconButton {
                    required property string modelData

                    enabled: !root.login.busy
                    implicitWidth: Theme.grown(64)
                    outlined: true
                    symbol: root.symbolFor(modelData)
                    text: qsTr("Continue with %1, in a sign-in window.").arg(root.login.displayName(modelData))
                    onClicked: root.login.signInWith(modelData)
                }
            }
        },
        Column {
            spacing: Theme.spaceTiny
            width: parent.width

            AppButton {
                enabled: !root.login.busy
                symbol: "person.badge.key.fill"
                text: qsTr("Sign in with a passkey")
                width: parent.width
                onClicked: root.login.signInWithPasskey()
            }

            Label {
                color: Theme.secondary
                font.pixelSize: Theme.textSmall
                horizontalAlignment: Text.AlignHCenter
                text: root.login.passkey.available ? qsTr("With your security key.") : qsTr("Opens the sign-in window; use your passkey there.")
                width: parent.width
                wrapMode: Text.Wrap
            }
        }
    ]

    EmailField {
        id: email

        login: root.login
        width: parent.width
        onAccepted: root.submit()
    }

    function symbolFor(provider: string): string {
        switch (provider) {
        case "google":
            return "GoogleMark";
        case "microsoft":
            return "MicrosoftMark";
        case "apple":
            return "apple.logo";
        default:
            return "person.crop.circle";
        }
    }
}
