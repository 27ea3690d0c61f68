import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// A line that shows or hides what belongs to it.
Column {
    id: root

    required property string title
    property bool open: false
    default property alias content: body.data

    spacing: Theme.spaceSmall

    T.AbstractButton {
        id: head

        readonly property bool expanded: root.open ///< told to assistants

        focusPolicy: Qt.StrongFocus
        implicitHeight: label.implicitHeight + Theme.spaceTiny
        implicitWidth: label.x + label.width
        text: root.title

        Accessible.name: text
        Accessible.role: Accessible.Button
        Accessible.onPressAction: if (head.enabled)
            head.clicked()
        Keys.onEnterPressed: head.clicked()
        Keys.onReturnPressed: head.clicked()
        onClicked: root.open = !root.open

        SymbolIcon {
            id: arrow

            anchors.verticalCenter: parent.verticalCenter
            color: Theme.accent
            height: Theme.symbolSmall
            name: "chevron.right"
            rotation: root.open ? 90 : 0
            width: height

            Behavior on rotation {
                NumberAnimation {
                    duration: Theme.quick
                }
            }
        }

        Label {
            id: label

            Accessible.ignored: true
            anchors.left: arrow.right
            anchors.leftMargin: Theme.spaceTiny
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.accent
            text: head.text
            width: Math.min(implicitWidth, root.width - arrow.width - Theme.spaceTiny)
            wrapMode: Text.Wrap
        }

        FocusRing {
            shown: head.visualFocus
            target: head
        }

        HoverHandler {
            cursorShape: Qt.PointingHandCursor
        }
    }

    Column {
        id: body

        spacing: Theme.spaceTiny
        visible: root.open
        width: root.width
    }
}
