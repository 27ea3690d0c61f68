import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// A button that shows a symbol; `text` says what it does, to those who hover over it and to those who cannot see it.
T.Button {
    id: root

    required property string symbol
    property string badge: ""
    property color badgeColor: Theme.accentFill
    property string badgeText: badge ///< for assistants
    property alias symbolColor: glyph.color
    property bool outlined: false
    property int symbolSize: Theme.symbolLarge
    property bool filled: false ///< the symbol on a disc

    font.family: Theme.family
    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.controlHeight
    implicitWidth: Theme.controlHeight
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.name: badge === "" ? text : qsTr("%1, %2").arg(text).arg(badgeText)
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

        Badge {
            anchors.horizontalCenter: root.filled ? parent.right : glyph.right
            anchors.horizontalCenterOffset: root.filled ? -Theme.spaceTiny : 0
            anchors.verticalCenter: root.filled ? parent.top : glyph.top
            anchors.verticalCenterOffset: root.filled ? Theme.spaceTiny : 0
            border.color: Theme.bar
            border.width: root.filled ? 1.5 : 0
            color: root.badgeColor
            spoken: false
            text: root.badge
            visible: root.badge !== ""
        }
    }

    Tip {
        shown: root.hovered || root.visualFocus
        text: root.text
    }
}
