import QtQuick
import Palvera.Controls
import Palvera.App

/// The menu of the account.
AppMenu {
    id: menu

    required property RootModel model

    // Where it leads once it has closed and given the keyboard back.
    property bool leadsToAbout: false
    property bool leadsToCheck: false
    property bool leadsOut: false

    onAboutToShow: leadsToAbout = leadsToCheck = leadsOut = false
    onClosed: {
        if (leadsToAbout)
            model.about.open = true;
        else if (leadsToCheck)
            model.about.checkForUpdates();
        else if (leadsOut)
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
