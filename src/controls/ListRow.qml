import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// One row of a list: a symbol on a tinted tile, a title with a second line, and what the caller puts at its end.
T.ItemDelegate {
    id: root

    property string symbol: ""
    property color tintColor: Theme.accent
    property color tile: Theme.accentSoft
    property string subtitle: ""
    property string description: subtitle ///< that is spoken, before the place in the list
    property int index: -1 ///< in a list
    property string trailingSymbol: "chevron.right"
    property bool separated: true ///< a line towards the next row
    property bool aimedAt: false ///< something is about to be dropped on it
    property alias trailing: end.data
    readonly property string place: ListView.view && index >= 0 ? qsTr("%1 of %2").arg(index + 1).arg((ListView.view as ListView).count) : ""

    font.family: Theme.family
    font.pixelSize: Theme.textRow
    font.weight: Font.Medium
    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.rowHeight
    implicitWidth: 480
    leftPadding: Theme.spaceLarge
    rightPadding: Theme.spaceLarge

    Accessible.description: place === "" || description === "" ? description + place : qsTr("%1, %2").arg(description).arg(place)
    Accessible.name: text
    Accessible.role: Accessible.ListItem
    Accessible.onPressAction: if (root.enabled)
        root.clicked()
    // A row in the pool is not drawn, but would be read out.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.margins: Theme.spaceTiny
            border.color: Theme.accent
            border.width: root.aimedAt ? Theme.focusWidth : 0
            color: root.aimedAt ? Theme.accentSoft : root.down ? Theme.pressed : root.hovered || root.activeFocus ? Theme.hover : "transparent"
            radius: Theme.radiusMedium

            FocusRing {
                anchors.margins: 0
                radius: parent.radius
                shown: root.activeFocus
                target: parent
            }
        }

        Rectangle {
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.leftMargin: texts.x + root.leftPadding
            anchors.right: parent.right
            anchors.rightMargin: Theme.spaceLarge
            color: Theme.line
            height: 1
            visible: root.separated && !root.hovered && !root.activeFocus && !root.aimedAt
        }
    }
    contentItem: Item {
        Rectangle {
            id: tile

            anchors.verticalCenter: parent.verticalCenter
            color: root.tile
            height: Theme.tile + Theme.focusGap
            radius: Theme.radiusMedium
            visible: root.symbol !== ""
            width: visible ? height : 0

            SymbolIcon {
                anchors.centerIn: parent
                color: root.tintColor
                height: Theme.symbolLarge
                name: root.symbol
                width: height
            }
        }

        Column {
            id: texts

            anchors.left: tile.right
            anchors.leftMargin: tile.visible ? Theme.spaceMedium : 0
            anchors.right: end.left
            anchors.rightMargin: Theme.spaceMedium
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.focusGap

            Label {
                Accessible.ignored: true
                font: root.font
                text: root.text
                width: parent.width
            }

            Figures {
                Accessible.ignored: true
                color: Theme.secondary
                font.pixelSize: Theme.textSmall
                text: root.subtitle
                visible: text !== ""
                width: parent.width
            }
        }

        Row {
            id: end

            anchors.right: trailing.left
            anchors.rightMargin: children.length > 0 ? Theme.spaceMedium : 0
            anchors.verticalCenter: parent.verticalCenter
        }

        SymbolIcon {
            id: trailing

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            height: Theme.symbolSmall
            name: root.trailingSymbol
            visible: name !== ""
            width: height
        }
    }
}
