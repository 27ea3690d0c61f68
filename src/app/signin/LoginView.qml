import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// The sign-in screen, whichever face it shows.
FocusScope {
    id: root

    required property LoginModel login
    required property string buildText
    property int above: 0 ///< what stands in the upper corner
    property bool covered: false ///< a dialog has the keyboard
    property bool wantsFocus: false ///< once it is not covered
    property Item placeBefore: null ///< what had the keyboard when the face came
    readonly property bool waits: login.configLoading

    signal aboutAsked()

    Connections {
        function onFaceChanged() {
            root.showFace();
        }

        function onFocusWanted() {
            root.takeFocus();
        }

        target: root.login
    }

    Connections {
        function onChanged() {
            root.showFace();
        }

        target: root.login.browser
    }

    Connections {
        function onChanged() {
            root.showFace();
        }

        target: root.login.passkey
    }

    Component.onCompleted: showFace()
    onCoveredChanged: {
        if (covered || !wantsFocus)
            return;
        placeBefore = Window.activeFocusItem;
        takeFocus();
    }
    Keys.onEscapePressed: login.goBack()
    onWaitsChanged: {
        placeBefore = Window.activeFocusItem;
        focusSoon.restart();
    }

    Timer {
        id: focusSoon

        interval: 0
        onTriggered: root.takeFocus()
    }

    ScrollPage {
        anchors.fill: parent
        contentHeight: Math.max(height, form.height + 2 * Theme.spaceHuge + root.above)

        Column {
            id: form

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.spaceLarge
            width: Math.min(Theme.grown(400), parent.width - 2 * Theme.spaceHuge)
            y: Math.max(Theme.spaceHuge + root.above, Math.round((parent.height - height) / 2))

            Card {
                height: body.height + 2 * Theme.spaceVast
                width: parent.width

                Column {
                    id: body

                    anchors.horizontalCenter: parent.horizontalCenter
                    spacing: Theme.spaceMedium
                    width: parent.width - 2 * Theme.spaceVast
                    y: Theme.spaceVast

                    BrandMark {
                        anchors.horizontalCenter: parent.horizontalCenter
                    }

                    Label {
                        Accessible.role: Accessible.AlertMessage
                        horizontalAlignment: Text.AlignHCenter
                        text: root.login.notice
                        visible: text !== ""
                        width: parent.width
                        wrapMode: Text.Wrap
                    }

                    Spinner {
                        anchors.horizontalCenter: parent.horizontalCenter
                        visible: root.waits
                    }

                    Label {
                        Accessible.role: Accessible.AlertMessage
                        color: Theme.secondary
                        horizontalAlignment: Text.AlignHCenter
                        text: root.login.waitText
                        visible: text !== ""
                        width: parent.width
                        wrapMode: Text.Wrap
                    }

                    Loader {
                        id: face

                        focus: true
                        visible: !root.waits
                        width: parent.width

                        NumberAnimation {
                            id: appear

                            duration: Theme.faceChange
                            easing.type: Easing.OutQuad
                            from: 0
                            property: "opacity"
                            target: face
                            to: 1
                        }
                    }

                    Row {
                        spacing: Theme.spaceSmall
                        visible: root.login.error !== ""
                        width: parent.width

                        SymbolIcon {
                            color: Theme.danger
                            height: Theme.symbolMedium
                            name: "exclamationmark.circle.fill"
                            width: height
                        }

                        Words {
                            color: Theme.danger
                            role: Accessible.AlertMessage
                            text: root.login.error
                            width: parent.width - Theme.symbolMedium - parent.spacing
                        }
                    }

                    AppButton {
                        anchors.horizontalCenter: parent.horizontalCenter
                        kind: AppButton.Kind.Link
                        text: root.login.face === LoginModel.Login ? qsTr("Back to sign in") : qsTr("Sign in with an access code")
                        visible: root.login.accessCodeLinkShown && !root.login.browser.waiting && !root.login.passkey.asking
                        onClicked: root.login.toggleAccessCode()
                    }
                }
            }

            SiteChoice {
                login: root.login
                visible: root.login.siteChoiceShown
                width: parent.width
            }

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: Theme.spaceLarge

                AppButton {
                    Accessible.description: qsTr("About Palvera")
                    font.pixelSize: Theme.textSmall
                    implicitHeight: implicitContentHeight
                    kind: AppButton.Kind.Link
                    text: root.buildText
                    onClicked: root.aboutAsked()
                }

                Row {
                    spacing: Theme.spaceTiny
                    visible: root.login.identityProviderShown

                    SymbolIcon {
                        anchors.verticalCenter: parent.verticalCenter
                        color: Theme.secondary
                        height: Theme.symbolSmall
                        name: "lock.fill"
                        width: height
                    }

                    Label {
                        color: Theme.secondary
                        font.pixelSize: Theme.textSmall
                        text: qsTr("Secured by WorkOS")
                    }
                }
            }
        }
    }

    function sourceFor(shown: int): string {
        if (login.browser.waiting)
            return "BrowserFace.qml";
        if (login.passkey.asking)
            return "PasskeyFace.qml";
        switch (shown) {
        case LoginModel.Login:
            return "LoginFace.qml";
        case LoginModel.Email:
            return "EmailFace.qml";
        case LoginModel.Password:
            return "PasswordFace.qml";
        case LoginModel.Enrol:
            return "EnrolFace.qml";
        case LoginModel.Forgot:
            return "ForgotFace.qml";
        default:
            return "CodeFace.qml";
        }
    }

    function showFace() {
        const shown = Qt.resolvedUrl(sourceFor(login.face));
        if (face.source === shown)
            return;
        placeBefore = Window.activeFocusItem;
        face.setSource(shown, {
            login: root.login
        });
        if (login.faceMoves || login.browser.waiting || login.passkey.asking)
            appear.restart();
    }

    /// Leaves the keyboard where somebody has led it since the face came.
    function takeFocus() {
        wantsFocus = covered;
        const at = Window.activeFocusItem;
        const isLed = at !== placeBefore && at !== null && at.activeFocusOnTab && at.visible;
        if (face.item && enabled && !covered && !isLed) // and not on its way out
            (face.item as SignInFace).takeFocus();
    }
}
