import QtQuick
import Palvera.Controls
import Palvera.App

/// Who is signed in, and the way out.
IconButton {
    id: root

    required property RootModel model

    symbol: "person.crop.circle"
    text: qsTr("Account")
    visible: model.userEmail !== ""
    onClicked: menu.popup(root, root.width - menu.width, root.height + Theme.spaceTiny)

    AppMenu {
        id: menu

        MenuRow {
            enabled: false
            text: root.model.userName
            visible: text !== ""
            height: visible ? implicitHeight : 0
        }

        MenuRow {
            enabled: false
            text: root.model.userEmail
        }

        MenuLine {}

        MenuRow {
            text: qsTr("Sign out")
            onTriggered: root.model.signOut()
        }
    }
}
