import QtQuick
import Palvera.Assets
import Palvera.Panel
import Palvera.Shell
import Palvera.Update
import Palvera.App

/// The assets of the client that is open.
AssetsView {
    id: root

    required property RootModel model

    assets: model.assets
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
}
