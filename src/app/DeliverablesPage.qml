import QtQuick
import Palvera.Deliverables
import Palvera.Panel
import Palvera.Shell
import Palvera.Update
import Palvera.App

/// The deliverables of the project that is open.
DeliverablesView {
    id: root

    required property RootModel model

    deliverables: model.deliverables
    rowDrop: model.rowDrop
    sender: model.sender
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
    onLeaving: model.back()
    onOpened: row => model.openDeliverable(row)
}
