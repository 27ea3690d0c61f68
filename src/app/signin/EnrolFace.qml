import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// An authenticator is set up.
SignInFace {
    id: root

    complete: /[^\s-]/.test(login.code)
    firstField: code
    text: qsTr("Every sign-in asks for a code from an authenticator app. Scan this with Google Authenticator, 1Password or any app that makes them, then enter the code it shows.")
    title: qsTr("Add an authenticator")
    below: BackLink {
        anchors.horizontalCenter: parent.horizontalCenter
        login: root.login
    }

    // White whatever the appearance: cameras want dark on light.
    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        border.color: Theme.line
        color: Theme.paper
        height: 176
        radius: Theme.radiusMedium
        visible: picture.state !== DataImage.Failed && picture.state !== DataImage.Empty
        width: height

        Accessible.name: qsTr("QR code for your authenticator app")
        Accessible.role: Accessible.Graphic

        DataImage {
            id: picture

            address: root.login.qrCode
            anchors.fill: parent
            anchors.margins: Theme.spaceSmall
        }

        Spinner {
            anchors.centerIn: parent
            visible: picture.state === DataImage.Decoding
        }
    }

    Disclosure {
        open: picture.state === DataImage.Failed
        title: qsTr("Cannot scan it? Enter this key instead")
        width: parent.width

        Label {
            color: Theme.secondary
            font.pixelSize: Theme.textSmall
            text: qsTr("Enter this key in your authenticator app")
            width: parent.width
            wrapMode: Text.Wrap
        }

        AppTextField {
            label: qsTr("Key")
            readOnly: true
            text: root.login.secret
            width: parent.width
        }
    }

    CodeField {
        id: code

        login: root.login
        hint: qsTr("Code from the app")
        width: parent.width
        onAccepted: root.submit()
    }
}
