pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// A choice of one among many, in a list that drops down.
T.ComboBox {
    id: root

    property string label: ""
    property string codeRole: "" ///< of a code that is shown beside the text
    property bool compact: false ///< as wide as what it is set to
    readonly property bool expanded: popup.visible ///< told to assistants

    font.family: Theme.family
    font.pixelSize: Theme.textBody
    implicitHeight: compact ? Theme.controlHeight - Theme.spaceTiny : Theme.controlHeight
    implicitWidth: compact ? leftPadding + Math.min(Theme.grown(160), implicitContentWidth) + rightPadding : Theme.grown(180)
    leftPadding: Theme.spaceMedium
    opacity: enabled ? 1 : Theme.disabledOpacity
    rightPadding: Theme.symbolSmall + Theme.spaceMedium + Theme.focusGap

    Accessible.name: label === "" ? displayText : qsTr("%1: %2").arg(label).arg(displayText)
    Accessible.role: Accessible.ComboBox
    Accessible.onPressAction: {
        forceActiveFocus(Qt.TabFocusReason); // and back here, once the list closes
        popup.open();
    }
    // Not when pressed: the release closes an open list.
    Keys.onReleased: event => {
        event.accepted = !popup.visible && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter);
        if (event.accepted)
            popup.open();
    }

    background: Rectangle {
        color: root.down ? Theme.pressed : root.hovered ? Theme.hover : Theme.field
        radius: Theme.radiusMedium

        FocusRing {
            shown: root.visualFocus
            target: parent
        }
    }
    contentItem: Label {
        Accessible.ignored: true
        font: root.font
        text: root.displayText
        verticalAlignment: Text.AlignVCenter
    }
    delegate: PickerRow {
        required property int index
        required property var model

        checked: root.currentIndex === index
        focusPolicy: Qt.NoFocus // the list gives it
        highlighted: root.highlightedIndex === index
        code: root.codeRole === "" ? "" : model[root.codeRole]
        text: model[root.textRole === "" ? "modelData" : root.textRole]
        width: ListView.view ? (ListView.view as ListView).width : 0

        Accessible.description: qsTr("%1 of %2").arg(index + 1).arg(root.count)
    }
    indicator: SymbolIcon {
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceSmall
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        height: Theme.symbolSmall
        name: "chevron.down"
        width: height
    }
    popup: T.Popup {
        implicitHeight: Math.min(contentItem.implicitHeight + 2 * padding, Theme.grown(320))
        margins: Theme.spaceSmall
        padding: Theme.spaceTiny + 1
        width: Math.max(root.width, Theme.grown(180))
        y: root.height + Theme.spaceTiny
        onOpened: contentItem.forceActiveFocus(Qt.PopupFocusReason) // however it was opened

        background: Item {
            Shadow {
                anchors.fill: parent
                radius: Theme.radiusMedium
            }

            Rectangle {
                anchors.fill: parent
                border.color: Theme.line
                color: Theme.raised
                radius: Theme.radiusMedium
            }
        }
        contentItem: ListView {
            clip: true
            currentIndex: root.highlightedIndex
            highlightMoveDuration: 0
            implicitHeight: contentHeight
            keyNavigationEnabled: false
            model: root.delegateModel

            Accessible.name: root.label === "" ? root.displayText : root.label
            Accessible.role: Accessible.List
            Keys.forwardTo: [root]
            onActiveFocusChanged: {
                if (!activeFocus)
                    root.popup.close(); // Tab leads out of it
            }
            onParentChanged: {
                if (parent)
                    parent.Accessible.ignored = true; // Qt calls it a dialog
            }

            RowOrder {
                rows: (root.popup.contentItem as ListView).contentItem
            }
        }
    }
}
