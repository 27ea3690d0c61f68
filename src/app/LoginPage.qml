import QtQuick
import Palvera.Controls
import Palvera.SignIn
import Palvera.Update
import Palvera.App

/// Where nobody is signed in.
LoginView {
    id: root

    required property RootModel model

    above: update.visible ? update.height : 0
    buildText: model.buildText
    covered: model.about.open || model.about.alertTitle !== "" || model.updatePill.confirming
    login: model.login
    onAboutAsked: model.about.open = true

    UpdateButton {
        id: update

        anchors.margins: Theme.spaceSmall
        anchors.right: parent.right
        anchors.top: parent.top
        pill: root.model.updatePill
    }
}
