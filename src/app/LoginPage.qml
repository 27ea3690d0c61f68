import QtQuick
import Palvera.Controls
import Palvera.SignIn
import Palvera.Shell
import Palvera.Update
import Palvera.App

/// Where nobody is signed in.
LoginView {
    id: root

    required property RootModel model

    above: offers.height
    buildText: model.buildText
    covered: model.shell.menuOpen || model.shell.sheet !== ShellModel.None || model.about.open || model.about.alertTitle !== "" || model.updatePill.confirming
    login: model.login
    onAboutAsked: model.about.open = true

    Row {
        id: offers

        anchors.margins: Theme.spaceSmall
        anchors.right: parent.right
        anchors.top: parent.top

        UpdateButton {
            pill: root.model.updatePill
        }

        MenuButton {
            shell: root.model.shell
        }
    }
}
