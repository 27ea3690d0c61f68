import QtQuick
import Palvera.Controls
import Palvera.Panel
import Palvera.Shell
import Palvera.Update
import Palvera.App

/// The projects of the client that is open.
ProjectsView {
    id: root

    required property RootModel model

    projects: model.projects
    toolbarItems: [
        AppButton {
            anchors.verticalCenter: parent.verticalCenter
            kind: AppButton.Kind.Link
            rightPadding: Theme.spaceMedium
            text: qsTr("Choose another client")
            onClicked: root.leaving()
        },
        ReloadButton {
            model: root.model
        },
        UpdateButton {
            pill: root.model.updatePill
        },
        TransfersButton {
            transfers: root.model.transfers
        },
        AccountMenu {
            model: root.model
        },
        MenuButton {
            shell: root.model.shell
        }
    ]
    onLeaving: model.chooseAnotherClient()
    onOpened: row => model.openProject(row)
}
