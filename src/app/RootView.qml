import QtQuick
import Palvera.Controls
import Palvera.Update
import Palvera.App

/// The screen that belongs to the model's key; a change of the key fades from one to the next.
FocusScope {
    id: root

    required property RootModel model
    property Loader shown: one
    readonly property Loader spare: shown === one ? other : one

    Component.onCompleted: {
        show();
        model.start();
    }

    Connections {
        function onKeyChanged() {
            root.show();
        }

        target: root.model
    }

    Loader {
        id: one

        anchors.fill: parent
        opacity: 0
    }

    Loader {
        id: other

        anchors.fill: parent
        opacity: 0
    }

    Badge {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.margins: Theme.spaceSmall
        color: Theme.dangerFill
        text: qsTr("Not encrypted")
        visible: root.model.serviceExposed
        z: 2

        HoverHandler {
            id: pointer
        }

        Tip {
            above: true
            shown: pointer.hovered
            text: qsTr("The service address that PV_API names is not encrypted: others on the way can read along.")
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.spaceLarge
        anchors.horizontalCenter: parent.horizontalCenter
        color: Theme.surface
        height: remark.implicitHeight
        radius: remark.radius
        visible: root.model.remark !== ""
        width: Math.min(Theme.grown(560), parent.width - 2 * Theme.spaceLarge)
        z: 2

        Notice {
            id: remark

            anchors.fill: parent
            text: root.model.remark
            onDismissed: root.model.dismissRemark()
        }
    }

    ConfirmDialog {
        cancelText: qsTr("Cancel")
        careful: true
        confirmText: qsTr("Send anyway")
        message: root.model.transfers.doubtText
        title: qsTr("Check this file before it goes")
        visible: root.model.transfers.doubtText !== ""
        onAccepted: root.model.transfers.confirmDoubt()
        onRejected: root.model.transfers.dismissDoubt()
    }

    ConfirmDialog {
        cancelText: qsTr("Stay signed in")
        confirmText: qsTr("Sign out")
        destructive: true
        message: root.model.signOutQuestion
        title: qsTr("Sign out while files are moving?")
        visible: root.model.signOutQuestion !== ""
        onAccepted: root.model.confirmSignOut()
        onRejected: root.model.staySignedIn()
    }

    UpdateDialogs {
        about: root.model.about
        anchors.fill: parent
        pill: root.model.updatePill
    }

    ParallelAnimation {
        id: fade

        property Loader from
        property Loader to

        onFinished: from.source = ""

        NumberAnimation {
            duration: Theme.screenChange
            easing.type: Easing.InOutQuad
            from: 0
            property: "opacity"
            target: fade.to
            to: 1
        }

        NumberAnimation {
            duration: Theme.screenChange
            easing.type: Easing.InOutQuad
            from: 1
            property: "opacity"
            target: fade.from
            to: 0
        }
    }

    function sourceFor(key: string): string {
        if (key === "loading")
            return "LoadingView.qml";
        if (key === "login")
            return "LoginPage.qml";
        return key === "orgs" ? "OrgPickerPage.qml" : "ClientView.qml";
    }

    function show() {
        fade.complete();
        fade.from = shown;
        fade.to = spare;
        fade.to.setSource(sourceFor(model.key), {
            model: root.model
        });
        fade.from.enabled = false;
        fade.to.enabled = true;
        fade.to.z = 1;
        fade.from.z = 0;
        shown = fade.to;
        shown.item.focus = true;
        shown.focus = true;
        fade.start();
    }
}
