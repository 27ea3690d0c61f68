import QtQuick
import Palvera.Controls

/// A question that must be answered first. Escape cancels.
AppDialog {
    id: root

    property string symbol: "exclamationmark.triangle.fill"
    property color symbolColor: destructive ? Theme.danger : Theme.warning
    property string message: ""
    property string confirmText: qsTr("OK")
    property string cancelText: qsTr("Cancel") ///< empty where there is nothing to choose
    property bool destructive: false
    property bool careful: destructive ///< the keyboard is at the answer that does nothing
    property bool busy: false ///< the answer to something is waited for

    onOpened: (careful ? cancel : confirm).forceActiveFocus(Qt.TabFocusReason)

    contentItem: Column {
        spacing: Theme.spaceMedium

        Accessible.description: root.message
        Accessible.name: root.title
        Accessible.role: Accessible.Dialog

        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            color: root.symbolColor
            height: Theme.symbolHuge
            name: root.symbol
            visible: !root.busy
            width: height
        }

        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.busy
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
            visible: text !== ""
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
                visible: text !== ""
                width: (parent.width - parent.spacing) / 2
                onClicked: root.reject()
            }

            AppButton {
                id: confirm

                kind: root.destructive ? AppButton.Kind.Destructive : AppButton.Kind.Primary
                text: root.confirmText
                width: cancel.visible ? cancel.width : parent.width
                onClicked: root.accept()
            }
        }
    }
}
