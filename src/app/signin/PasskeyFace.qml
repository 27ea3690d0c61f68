pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// What the security key asks for.
SignInFace {
    id: root

    readonly property PasskeyModel passkey: login.passkey
    readonly property bool asksForPin: passkey.prompt === PasskeyModel.Pin
    readonly property bool asksForHand: passkey.text !== "" && !asksForPin && accounts.count === 0

    readonly property string step: passkey.text
    readonly property Announcer announcer: Announcer {
        parent: root
    }

    actionShown: false
    text: passkey.text
    title: qsTr("Sign in with a passkey")

    Component.onCompleted: focusSoon.restart()
    onStepChanged: {
        if (step !== "")
            announcer.say(step); // the keyboard may stay where it is, and only the hand is wanted
    }

    Connections {
        function onChanged() {
            focusSoon.restart();
        }

        target: root.passkey
    }

    Timer {
        id: focusSoon

        interval: 0
        onTriggered: root.takeFocus()
    }

    SymbolIcon {
        anchors.horizontalCenter: parent.horizontalCenter
        color: Theme.accent
        height: Theme.symbolHuge
        name: "person.badge.key.fill"
        visible: root.asksForHand
        width: height
    }

    Spinner {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.passkey.prompt === PasskeyModel.Nothing
    }

    SecureField {
        id: pin

        hint: qsTr("PIN")
        visible: root.asksForPin
        width: parent.width
        onAccepted: root.enterPin()
    }

    Words {
        color: Theme.danger
        horizontalAlignment: Text.AlignHCenter
        role: Accessible.AlertMessage
        text: root.passkey.note
        visible: text !== ""
        width: parent.width
    }

    AppButton {
        enabled: pin.text !== ""
        kind: AppButton.Kind.Primary
        text: qsTr("Continue")
        visible: root.asksForPin
        width: parent.width
        onClicked: root.enterPin()
    }

    Repeater {
        id: accounts

        model: root.passkey.accounts

        AppButton {
            required property int index
            required property string modelData

            text: modelData
            width: parent.width
            onClicked: root.passkey.choose(index)
        }
    }

    AppButton {
        id: browser

        anchors.horizontalCenter: parent.horizontalCenter
        kind: AppButton.Kind.Link
        text: qsTr("Use the browser instead")
        onClicked: root.passkey.useBrowser()
    }

    AppButton {
        anchors.horizontalCenter: parent.horizontalCenter
        kind: AppButton.Kind.Link
        text: qsTr("Cancel")
        onClicked: root.passkey.cancel()
    }

    function enterPin() {
        const entered = pin.text;
        pin.clear();
        if (entered !== "")
            passkey.enterPin(entered);
    }

    function takeFocus() {
        if (asksForPin)
            pin.forceActiveFocus(Qt.OtherFocusReason);
        else if (accounts.count > 0)
            accounts.itemAt(0).forceActiveFocus(Qt.OtherFocusReason);
        else
            browser.forceActiveFocus(Qt.OtherFocusReason);
    }
}
