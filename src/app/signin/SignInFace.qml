import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// One face of the sign-in screen: a heading, a text, what the face adds, and its button.
FocusScope {
    id: root

    required property LoginModel login
    property string title: login.title
    property string text: ""
    property string action: qsTr("Continue")
    property string busyAction: qsTr("Signing in")
    property bool complete: true ///< there is something to send
    property bool actionShown: true
    property Item firstField
    default property alias content: fields.data
    property alias below: after.data

    implicitHeight: body.height
    onFirstFieldChanged: {
        if (firstField)
            firstField.focus = true;
    }

    Column {
        id: body

        spacing: Theme.spaceMedium
        width: parent.width

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.spaceSmall

            Label {
                Accessible.role: Accessible.Heading
                font.pixelSize: Theme.textTitle
                font.weight: Font.DemiBold
                horizontalAlignment: Text.AlignHCenter
                lineHeight: 1
                text: root.title
                width: Math.min(implicitWidth, body.width - (label.visible ? label.width + parent.spacing : 0))
                wrapMode: Text.Wrap
            }

            Badge {
                id: label

                anchors.verticalCenter: parent.verticalCenter
                color: root.login.staging ? Theme.warningSoft : Theme.accentSoft
                ink: root.login.staging ? Theme.warning : Theme.accent
                text: root.login.siteLabel
                visible: text !== "" && root.title === root.login.title
            }
        }

        Label {
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            text: root.text
            visible: text !== ""
            width: parent.width
            wrapMode: Text.Wrap
        }

        Column {
            id: fields

            spacing: Theme.spaceMedium
            width: parent.width
        }

        AppButton {
            busy: root.login.busy
            busyText: root.busyAction
            enabled: !busy && root.complete
            kind: AppButton.Kind.Primary
            text: root.action
            visible: root.actionShown
            width: parent.width
            onClicked: root.submit()
        }

        Column {
            id: after

            spacing: Theme.spaceMedium
            width: parent.width
        }
    }

    function submit() {
        if (complete)
            login.submit();
    }

    /// Leaves the keyboard where somebody has led it already: who types ahead must not find a secret in another field.
    function takeFocus() {
        const chosen = activeFocus && Window.activeFocusItem !== root;
        if (firstField && !chosen)
            firstField.forceActiveFocus(Qt.OtherFocusReason);
    }
}
