import QtQuick
import Palvera.Controls

/// What a row of a menu or of a list of choices holds: its text, a code that this stands for, and a mark where it is chosen.
Label {
    id: root

    required property string code ///< empty for none
    required property bool checked
    required property bool highlighted

    Accessible.ignored: true
    color: !enabled ? Theme.secondary : highlighted ? Theme.onFill : Theme.text
    rightPadding: (root.checked ? Theme.symbolMedium : 0) + (chip.visible ? chip.width + Theme.spaceSmall : 0)
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
