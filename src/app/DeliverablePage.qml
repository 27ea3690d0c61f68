import QtQuick
import Palvera.Deliverables
import Palvera.Panel
import Palvera.Shell
import Palvera.Update
import Palvera.App

/// The deliverable that is open.
DeliverableView {
    id: root

    required property RootModel model

    deliverable: model.deliverable
    projectName: model.deliverables.title
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
    onDiscarded: key => cutOff.askToDiscard(key)
    onLeaving: model.back()
    onLocated: key => cutOff.locate(key)
    onResumed: key => model.transfers.interrupted.resume(key)

    InterruptedDialogs {
        id: cutOff

        interrupted: root.model.transfers.interrupted
    }
}
