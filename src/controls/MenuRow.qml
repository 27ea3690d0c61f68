import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// One thing that a menu offers; not enabled, one that it tells.
T.MenuItem {
    id: root

    property string code: "" ///< what the text stands for

    font.family: Theme.family
    font.pixelSize: Theme.textBody
    implicitHeight: Theme.controlHeight - Theme.spaceTiny
    implicitWidth: 220
    leftPadding: Theme.spaceMedium
    rightPadding: Theme.spaceMedium

    Accessible.name: code === "" ? text : qsTr("%1, %2").arg(text).arg(code)
    Accessible.role: Accessible.MenuItem
    Accessible.onPressAction: if (root.enabled)
        root.clicked()

    background: Rectangle {
        color: root.highlighted && root.enabled ? Theme.accentFill : "transparent"
        radius: Theme.radiusSmall
    }
    contentItem: MenuRowText {
        checked: root.checked
        code: root.code
        font: root.font
        highlighted: root.highlighted
        text: root.text
    }
}
