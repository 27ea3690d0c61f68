import QtQuick
import Palvera.Controls
import Palvera.Assets

/// What can be done with the row that it was opened for: what the keys do, too.
AppMenu {
    id: root

    required property AssetsModel assets
    property int row: -1
    property bool opens: false
    property bool failed: false

    signal opening()
    signal copying()
    signal goingBack()

    MenuRow {
        height: visible ? implicitHeight : 0
        text: qsTr("Open")
        visible: root.opens
        onTriggered: root.opening()
    }

    MenuRow {
        height: visible ? implicitHeight : 0
        text: qsTr("Try again")
        visible: root.failed
        onTriggered: root.assets.tryAgain(root.row)
    }

    MenuRow {
        enabled: root.assets.downloadCount > 0
        text: root.assets.downloadText
        onTriggered: root.assets.downloadSelected()
    }

    MenuRow {
        text: qsTr("Copy name")
        onTriggered: root.copying()
    }

    MenuRow {
        text: qsTr("Select all")
        onTriggered: root.assets.selectAll()
    }

    MenuLine {}

    MenuRow {
        text: qsTr("Back")
        onTriggered: root.goingBack()
    }
}
