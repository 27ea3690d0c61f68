import QtQuick

/// The bar along the top of a screen: what leads back at its start, then the title, then what the caller puts at its end.
/// That goes below, where it would leave the title little room. What is put there is as high as a control.
Rectangle {
    id: root

    property string title: ""
    property string subtitle: ""
    property alias leading: start.data
    property alias trailing: end.data

    readonly property real room: width - start.width - 2 * Theme.spaceLarge - 2 * Theme.spaceMedium
    readonly property bool stacked: end.wanted + Math.min(heading.implicitWidth, Theme.grown(120)) > room

    color: Theme.bar
    implicitHeight: stacked ? end.y + end.height + Theme.spaceSmall : Theme.barHeight

    Accessible.name: title
    Accessible.role: Accessible.ToolBar

    Item {
        id: line

        height: Theme.barHeight
        width: parent.width

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
            anchors.right: parent.right
            anchors.rightMargin: Theme.spaceMedium + (root.stacked ? 0 : end.width + Theme.spaceMedium)
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
    }

    Flow {
        id: end

        readonly property real wanted: root.widthOfAll()

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceMedium
        spacing: Theme.spaceTiny
        width: root.stacked ? Math.min(wanted, root.width - 2 * Theme.spaceMedium) : wanted
        y: root.stacked ? line.height - Theme.spaceTiny : Math.round((line.height - height) / 2)
    }

    Rectangle {
        anchors.bottom: parent.bottom
        color: Theme.line
        height: 1
        width: parent.width
    }

    function widthOfAll(): real {
        let sum = 0;
        for (let i = 0; i < end.children.length; ++i) {
            const item = end.children[i] as Item;
            sum += item.visible ? item.width + end.spacing : 0;
        }
        return sum;
    }
}
