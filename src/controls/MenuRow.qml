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

    Accessible.name: text
    Accessible.role: Accessible.MenuItem
    Accessible.onPressAction: if (root.enabled)
        root.clicked()

    background: Rectangle {
        color: root.highlighted && root.enabled ? Theme.accentFill : "transparent"
        radius: Theme.radiusSmall
    }
    contentItem: Label {
        Accessible.ignored: true
        color: !root.enabled ? Theme.secondary : root.highlighted ? Theme.onFill : Theme.text
        font: root.font
        rightPadding: (root.checked ? Theme.symbolMedium : 0) + (chip.visible ? chip.width + Theme.spaceSmall : 0)
        text: root.text
        verticalAlignment: Text.AlignVCenter

        Rectangle {
            id: chip

            anchors.right: parent.right
            anchors.rightMargin: root.checked ? Theme.symbolMedium + Theme.spaceTiny : 0
            anchors.verticalCenter: parent.verticalCenter
            color: root.highlighted ? Theme.accentFillHover : Qt.alpha(codeText.color, 0.15)
            height: codeText.implicitHeight + Theme.spaceTiny
            radius: Theme.spaceTiny
            visible: root.code !== ""
            width: codeText.implicitWidth + Theme.spaceSmall

            Label {
                id: codeText

                Accessible.ignored: true
                anchors.centerIn: parent
                color: root.highlighted ? Theme.onFill : Theme.secondary
                font.family: Theme.code
                font.pixelSize: Theme.textCaption
                text: root.code
            }
        }

        SymbolIcon {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            color: parent.color
            height: Theme.symbolSmall
            name: "checkmark"
            visible: root.checked
            width: height
        }
    }
}
