import QtQuick
import Palvera.Controls
import Palvera.Assets

/// One line of the table: its cells as wide as the columns.
Item {
    id: root

    required property int index
    required property string name
    required property string note
    required property string deal
    required property string reference
    required property string type
    required property string symbol
    required property string tint
    required property string size
    required property string date
    required property string wholeDate
    required property bool opens
    required property bool moving
    required property bool failed
    required property real fraction
    required property bool selected

    property AssetColumns columns
    property bool current: false ///< where the keyboard is, while it is in the table
    property int count: 0

    signal pressed(int modifiers)
    signal opened()
    signal menuWanted(real x, real y)
    signal tryingAgain()
    signal pointedAt(TableCell cell) ///< which has more to say; null for none

    readonly property TableCell hinted: dealCell.hovered ? dealCell : dateCell.hovered ? dateCell : null
    readonly property string place: qsTr("%1 of %2").arg(index + 1).arg(count)
    readonly property var cells: [[qsTr("Deal"), deal], [qsTr("Type"), type], [qsTr("Size"), size], [qsTr("Date"), date]]
    readonly property string below: columns.folded ? [note, ...cells.map(cell => cell[1])].filter(text => text !== "").join(" · ") : note

    height: Theme.tableRowHeight

    Accessible.description: [note, ...cells.filter(cell => cell[1] !== "").map(cell => qsTr("%1: %2").arg(cell[0]).arg(cell[1])), place].filter(text => text !== "").join(", ")
    Accessible.focusable: true
    Accessible.focused: current
    Accessible.name: name
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.onPressAction: root.opened()
    onHintedChanged: pointedAt(hinted)
    // A row in the pool is not drawn, but would be read out.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.spaceTiny
        anchors.rightMargin: Theme.spaceTiny
        color: root.selected ? Theme.accentSoft : pointer.containsMouse ? Theme.hover : "transparent"
        radius: Theme.radiusSmall

        FocusRing {
            anchors.margins: 0
            radius: parent.radius
            shown: root.current
            target: parent
        }
    }

    MouseArea {
        id: pointer

        acceptedButtons: Qt.LeftButton | Qt.RightButton
        anchors.fill: parent
        hoverEnabled: true
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                root.menuWanted(mouse.x, mouse.y);
            else
                root.pressed(mouse.modifiers);
        }
        onDoubleClicked: mouse => {
            if (mouse.button === Qt.LeftButton)
                root.opened();
        }
    }

    Row {
        anchors.fill: parent

        Item {
            height: parent.height
            width: root.columns.name

            SymbolIcon {
                id: icon

                anchors.left: parent.left
                anchors.leftMargin: Theme.spaceLarge
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.tint(root.tint)
                height: Theme.symbolLarge
                name: root.symbol
                width: height
            }

            Column {
                anchors.left: icon.right
                anchors.leftMargin: Theme.spaceMedium
                anchors.right: again.visible ? again.left : parent.right
                anchors.rightMargin: Theme.spaceSmall
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.focusGap

                Label {
                    Accessible.ignored: true
                    elide: Text.ElideMiddle
                    font.weight: Font.Medium
                    text: root.name
                    width: parent.width
                }

                Figures {
                    Accessible.ignored: true
                    color: root.failed ? Theme.danger : Theme.secondary
                    elide: Text.ElideRight
                    font.pixelSize: Theme.textCaption
                    text: root.below
                    visible: text !== ""
                    width: parent.width
                }

                ProgressLine {
                    Accessible.ignored: true
                    height: 3
                    value: root.fraction
                    visible: root.moving
                    width: Math.min(parent.width, 240)
                }
            }

            AppButton {
                id: again

                Accessible.name: qsTr("%1 %2").arg(text).arg(root.name)
                anchors.right: parent.right
                anchors.rightMargin: Theme.spaceSmall
                anchors.verticalCenter: parent.verticalCenter
                kind: AppButton.Kind.Link
                text: qsTr("Try again")
                visible: root.failed
                onClicked: root.tryingAgain()
            }
        }

        TableCell {
            id: dealCell

            hint: root.reference
            text: root.deal
            width: root.columns.deal
        }

        TableCell {
            text: root.type
            width: root.columns.type
        }

        TableCell {
            atEnd: true
            text: root.size
            width: root.columns.size
        }

        TableCell {
            id: dateCell

            hint: root.wholeDate
            text: root.date
            width: root.columns.date
        }
    }
}
