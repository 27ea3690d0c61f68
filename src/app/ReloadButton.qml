import Palvera.Controls
import Palvera.App

/// Asks the platform again for what the screen shows.
IconButton {
    required property RootModel model

    symbol: "arrow.clockwise"
    text: qsTr("Reload")
    onClicked: model.reload()
}
