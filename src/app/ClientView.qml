import QtQuick
import Palvera.Deliverables
import Palvera.App

/// The client that is open: its projects, the deliverables of one, and one of these; and its assets. A page that one comes back to is as
/// one left it.
FocusScope {
    id: root

    required property RootModel model

    ClientPage {
        anchors.fill: parent
        asynchronous: false
        file: "ProjectsPage.qml"
        model: root.model
        shown: root.model.page === RootModel.Projects
    }

    ClientPage {
        anchors.fill: parent
        file: "DeliverablesPage.qml"
        model: root.model
        shown: root.model.page === RootModel.Deliverables
    }

    ClientPage {
        anchors.fill: parent
        file: "DeliverablePage.qml"
        model: root.model
        shown: root.model.page === RootModel.Deliverable
    }

    ClientPage {
        anchors.fill: parent
        file: "AssetsPage.qml"
        model: root.model
        shown: root.model.page === RootModel.Assets
    }

    SendingDialogs {
        anchors.fill: parent
        rowDrop: root.model.rowDrop
        sender: root.model.sender
    }
}
