import QtQuick
import Palvera.Controls

/// A fact about something, with a symbol or without.
Rectangle {
    id: root

    property string symbol: ""
    property string text: ""
    property bool silent: false ///< what stands beside it says it
    property color ink: Theme.secondary
    readonly property int around: 2 * Theme.spaceSmall + (symbol !== "" ? Theme.symbolSmall + Theme.spaceTiny : 0) ///< the text

    color: Theme.field
    implicitHeight: Theme.symbolLarge + Theme.focusGap
    implicitWidth: Math.ceil(label.implicitWidth) + around
    radius: Theme.radiusSmall

    Row {
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
            id: label

            Accessible.ignored: root.silent || text === ""
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
            font.pixelSize: Theme.textSmall
            font.weight: Font.Medium
            text: root.text
            width: root.width - root.around
        }
    }
}
