import QtQuick
import Palvera.Controls

/// A fact about something, with a symbol or without.
Rectangle {
    id: root

    property string symbol: ""
    property string text: ""
    property color ink: Theme.secondary

    color: Theme.field
    implicitHeight: Theme.symbolLarge + Theme.focusGap
    implicitWidth: row.implicitWidth + 2 * Theme.spaceSmall
    radius: Theme.radiusSmall

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.spaceTiny

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
            height: Theme.symbolSmall
            name: root.symbol
            visible: root.symbol !== ""
            width: height
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
            font.pixelSize: Theme.textSmall
            font.weight: Font.Medium
            text: root.text
        }
    }
}
