import QtQuick
import Palvera.Controls

/// What a ConfirmDialog holds.
Column {
    id: root

    required property ConfirmDialog dialog
    readonly property bool modal: true ///< told to assistants

    spacing: Theme.spaceMedium

    Accessible.description: dialog.message
    Accessible.name: dialog.title
    Accessible.role: Accessible.Dialog

    Connections {
        function onOpened() {
            (root.dialog.careful ? cancel : confirm).forceActiveFocus(Qt.TabFocusReason);
        }

        target: root.dialog
    }

    SymbolIcon {
        anchors.horizontalCenter: parent.horizontalCenter
        color: root.dialog.symbolColor
        height: Theme.symbolHuge
        name: root.dialog.symbol
        visible: !root.dialog.busy
        width: height
    }

    Spinner {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.dialog.busy
    }

    Label {
        font.pixelSize: Theme.textHeading
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        text: root.dialog.title
        width: parent.width
        wrapMode: Text.Wrap
    }

    Words {
        color: Theme.secondary
        horizontalAlignment: Text.AlignHCenter
        mostLines: 12
        text: root.dialog.message
        visible: text !== ""
        width: parent.width
    }

    Item {
        height: Theme.spaceTiny
        width: 1
    }

    Grid {
        id: answers

        readonly property real half: (width - spacing) / 2
        readonly property bool beside: Math.max(cancel.implicitWidth, confirm.implicitWidth) <= half

        columns: beside ? 2 : 1
        spacing: Theme.spaceSmall
        width: parent.width

        AppButton {
            id: cancel

            text: root.dialog.cancelText
            visible: text !== ""
            width: answers.beside ? answers.half : answers.width
            onClicked: root.dialog.reject()
        }

        AppButton {
            id: confirm

            kind: root.dialog.destructive ? AppButton.Kind.Destructive : AppButton.Kind.Primary
            text: root.dialog.confirmText
            width: cancel.visible ? cancel.width : answers.width
            onClicked: root.dialog.accept()
        }
    }
}
