import QtQuick
import Palvera.Panel
import Palvera.Shell
import Palvera.Update
import Palvera.App

/// Where no client is open.
OrgPickerView {
    id: root

    required property RootModel model

    error: model.error
    loading: model.orgsLoading
    orgs: model.orgPicker
    toolbarItems: [
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
    notices: InterruptedLine {
        transfers: root.model.transfers
        width: parent.width
    }
    onChosen: row => model.orgPicker.choose(row)
    onRetried: model.reloadOrgs()
}
