import QtQuick
import Palvera.Deliverables
import Palvera.Panel
import Palvera.Update
import Palvera.App

/// The deliverable that is open.
DeliverableView {
    id: root

    required property RootModel model

    deliverable: model.deliverable
    projectName: model.deliverables.title
    toolbarItems: [
        UpdateButton {
            pill: root.model.updatePill
        },
        TransfersButton {
            transfers: root.model.transfers
        },
        AccountMenu {
            model: root.model
        }
    ]
    onLeaving: model.back()
}
