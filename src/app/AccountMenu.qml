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

        // Where it leads once it has closed and given the keyboard back.
        property bool leadsToAbout: false
        property bool leadsToCheck: false
        property bool leadsOut: false

        onAboutToShow: leadsToAbout = leadsToCheck = leadsOut = false
        onClosed: {
            if (leadsToAbout)
                root.model.about.open = true;
            else if (leadsToCheck)
                root.model.about.checkForUpdates();
            else if (leadsOut)
                root.model.signOut();
        }

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
            text: qsTr("About Palvera")
            onTriggered: menu.leadsToAbout = true
        }

        MenuRow {
            code: qsTr("Ctrl+U")
            text: qsTr("Check for Updates…")
            onTriggered: menu.leadsToCheck = true
        }

        MenuLine {}

        MenuRow {
            text: qsTr("Sign out")
            onTriggered: menu.leadsOut = true
        }
    }
}
