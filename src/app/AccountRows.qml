import QtQuick
import Palvera.Controls
import Palvera.App

/// The menu of the account.
AppMenu {
    id: menu

    required property RootModel model

    property bool leadsOut: false ///< once it has closed and given the keyboard back

    onAboutToShow: leadsOut = false
    onClosed: {
        if (leadsOut)
            model.signOut();
    }

    MenuRow {
        enabled: false
        text: menu.model.userName
        visible: text !== ""
        height: visible ? implicitHeight : 0
    }

    MenuRow {
        enabled: false
        text: menu.model.userEmail
    }

    MenuLine {}

    MenuRow {
        text: qsTr("Sign out")
        onTriggered: menu.leadsOut = true
    }
}
