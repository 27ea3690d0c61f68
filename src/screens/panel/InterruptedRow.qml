import QtQuick
import Palvera.Controls

/// An upload that was cut off, and the way to go on with it.
Item {
    id: root

    required property string filename
    required property string progress

    signal resumed()

    implicitHeight: texts.implicitHeight + 18

    Accessible.name: qsTr("%1, %2").arg(filename).arg(progress)
    Accessible.role: Accessible.ListItem
    ListView.onPooled: visible = false
    ListView.onReused: visible = true

    SymbolIcon {
        id: symbol

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.orange
        height: Theme.symbolLarge
        name: "arrow.clockwise.circle.fill"
        width: height
    }

    Column {
        id: texts

        anchors.left: symbol.right
        anchors.leftMargin: 10
        anchors.right: resume.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Label {
            Accessible.ignored: true
            elide: Text.ElideMiddle
            text: root.filename
            width: parent.width
        }

        Figures {
            Accessible.ignored: true
            color: Theme.secondary
            font.pixelSize: Theme.textSmall
            text: root.progress
            width: parent.width
        }
    }

    AppButton {
        id: resume

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: Theme.controlHeight - Theme.spaceTiny
        text: qsTr("Resume")
        onClicked: root.resumed()
    }

    Rectangle {
        anchors.bottom: parent.bottom
        color: Theme.line
        height: 1
        width: parent.width
    }
}
