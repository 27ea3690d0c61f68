import QtQuick

/// The bar along the top of a screen: what leads back at its start, then the title, then what the caller puts at its end.
Rectangle {
    id: root

    property string title: ""
    property string subtitle: ""
    property alias leading: start.data
    property alias trailing: end.data

    color: Theme.bar
    implicitHeight: Theme.barHeight

    Accessible.name: title
    Accessible.role: Accessible.ToolBar

    Row {
        id: start

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceLarge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceSmall
    }

    Row {
        anchors.left: start.right
        anchors.leftMargin: start.width > 0 ? Theme.spaceLarge : 0
        anchors.right: end.left
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceSmall

        Label {
            id: heading

            font.weight: Font.DemiBold
            text: root.title
            visible: text !== ""
            width: Math.min(implicitWidth, parent.width)
        }

        Label {
            color: Theme.secondary
            text: root.subtitle
            visible: text !== ""
            width: Math.max(0, Math.min(implicitWidth, parent.width - heading.width - parent.spacing))
        }
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceTiny
    }

    Rectangle {
        anchors.bottom: parent.bottom
        color: Theme.line
        height: 1
        width: parent.width
    }
}
