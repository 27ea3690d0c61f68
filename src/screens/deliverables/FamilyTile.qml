import QtQuick
import Palvera.Controls

/// The symbol of a family of deliverables, on a tile of its tint.
Rectangle {
    id: root

    required property string symbol
    required property string tint

    color: Qt.alpha(Theme.tint(tint), 0.12)
    implicitHeight: Theme.controlHeight * 1.5
    implicitWidth: implicitHeight
    radius: Theme.radiusMedium

    SymbolIcon {
        anchors.centerIn: parent
        color: Theme.tint(root.tint)
        height: parent.height / 2
        name: root.symbol
        width: height
    }
}
