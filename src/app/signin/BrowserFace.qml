import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The user signs in in the browser, and this waits for it to come back.
SignInFace {
    id: root

    actionShown: false
    firstField: again
    text: login.browser.userBack ? qsTr("Finished there? Choose Open Palvera in the browser, or open it again.") : qsTr("Your browser is open at the sign-in page. When it asks, choose Open Palvera.")
    title: qsTr("Finish in your browser")

    AppButton {
        id: again

        kind: AppButton.Kind.Primary
        text: qsTr("Open the browser again")
        width: parent.width
        onClicked: root.login.browser.openAgain()
    }

    AppButton {
        text: qsTr("Copy the address")
        width: parent.width
        onClicked: {
            root.login.browser.copyAddress();
            text = qsTr("The address is copied");
        }
    }

    AppButton {
        anchors.horizontalCenter: parent.horizontalCenter
        kind: AppButton.Kind.Link
        text: qsTr("Cancel")
        onClicked: root.login.browser.cancel()
    }
}
