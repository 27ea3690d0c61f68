import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// A button that shows a symbol; `text` says what it does, to those who hover over it and to those who cannot see it.
T.Button {
    id: root

    required property string symbol
    property alias symbolColor: glyph.color
    property bool outlined: false
    property int symbolSize: Theme.symbolLarge
    property bool filled: false ///< the symbol on a disc

    font.family: Theme.family
    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.controlHeight
    implicitWidth: Theme.controlHeight
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.name: text
    Accessible.onPressAction: if (root.enabled)
        root.clicked()
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    background: Rectangle {
        border.color: Theme.line
        border.width: root.outlined ? 1 : 0
        color: root.down || root.checked ? Theme.pressed : root.hovered ? Theme.hover : root.outlined ? Theme.surface : "transparent"
        radius: Theme.radiusMedium

        FocusRing {
            shown: root.visualFocus
            target: parent
        }
    }
    contentItem: Item {
        Rectangle {
            anchors.centerIn: parent
            color: Theme.accentFill
            height: Theme.symbolLarge + Theme.spaceTiny
            radius: height / 2
            visible: root.filled
            width: height
        }

        SymbolIcon {
            id: glyph

            anchors.centerIn: parent
            color: root.filled ? Theme.onFill : Theme.text
            height: root.filled ? Theme.symbolSmall + Theme.focusGap : root.symbolSize
            name: root.symbol
            width: height
        }
    }

    Tip {
        shown: root.hovered || root.visualFocus
        text: root.text
    }
}
