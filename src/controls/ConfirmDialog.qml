import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// A question that must be answered first. Escape cancels.
T.Dialog {
    id: root

    property string symbol: "exclamationmark.triangle.fill"
    property string message: ""
    property string confirmText: qsTr("OK")
    property string cancelText: qsTr("Cancel")
    property bool destructive: false
    property bool careful: destructive ///< the keyboard is at the answer that does nothing

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.CloseOnEscape
    focus: true
    font.family: Theme.family
    implicitHeight: contentItem.implicitHeight + 2 * padding
    modal: true
    padding: Theme.spaceHuge
    width: Math.min(340, (parent ? parent.width : 340) - 2 * Theme.spaceLarge)

    onOpened: (careful ? cancel : confirm).forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }
    background: Item {
        Shadow {
            anchors.fill: parent
            depth: 28
        }

        Rectangle {
            anchors.fill: parent
            border.color: Theme.line
            color: Theme.raised
            radius: Theme.radiusLarge
        }
    }
    contentItem: Column {
        spacing: Theme.spaceMedium

        Accessible.description: root.message
        Accessible.name: root.title
        Accessible.role: Accessible.Dialog

        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            color: root.destructive ? Theme.danger : Theme.warning
            height: Theme.symbolHuge
            name: root.symbol
            width: height
        }

        Label {
            font.pixelSize: Theme.textHeading
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            text: root.title
            width: parent.width
            wrapMode: Text.Wrap
        }

        Words {
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            mostLines: 12
            text: root.message
            width: parent.width
        }

        Item {
            height: Theme.spaceTiny
            width: 1
        }

        Row {
            spacing: Theme.spaceSmall
            width: parent.width

            AppButton {
                id: cancel

                text: root.cancelText
                width: (parent.width - parent.spacing) / 2
                onClicked: root.reject()
            }

            AppButton {
                id: confirm

                kind: root.destructive ? AppButton.Kind.Destructive : AppButton.Kind.Primary
                text: root.confirmText
                width: (parent.width - parent.spacing) / 2
                onClicked: root.accept()
            }
        }
    }
}
