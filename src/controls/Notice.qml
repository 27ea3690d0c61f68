import QtQuick
import Palvera.Controls

/// What the user should know and could miss, until it is dismissed.
Rectangle {
    id: root

    property alias text: words.text
    property bool severe: false ///< something that the user wanted was refused
    readonly property color ink: severe ? Theme.danger : Theme.warning

    signal dismissed()

    color: severe ? Theme.dangerSoft : Theme.warningSoft
    implicitHeight: words.implicitHeight + 2 * Theme.spaceMedium
    radius: Theme.radiusMedium
    visible: text !== ""

    SymbolIcon {
        id: sign

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        color: root.ink
        height: Theme.symbolMedium
        name: "exclamationmark.circle.fill"
        width: height
    }

    Label {
        id: words

        Accessible.role: Accessible.AlertMessage
        anchors.left: sign.right
        anchors.leftMargin: Theme.spaceSmall
        anchors.right: close.left
        anchors.rightMargin: Theme.spaceSmall
        anchors.verticalCenter: parent.verticalCenter
        color: root.severe ? Theme.danger : Theme.text
        elide: Text.ElideRight
        maximumLineCount: 6
        wrapMode: Text.Wrap
    }

    IconButton {
        id: close

        Accessible.name: qsTr("%1: %2").arg(text).arg(root.text)
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceTiny
        anchors.verticalCenter: parent.verticalCenter
        symbol: "xmark"
        symbolSize: Theme.symbolSmall
        text: qsTr("Dismiss")
        onClicked: root.dismissed()
    }
}
