import QtQuick
import QtQuick.Templates as T
import Palvera.Controls

/// A button with a text. While `busyText` is shown it takes no press and keeps its width.
T.Button {
    id: root

    enum Kind { Primary, Plain, Link, Destructive }

    property int kind: AppButton.Kind.Plain
    property bool busy: false
    property string busyText: text
    property string symbol: ""

    readonly property bool filled: kind === AppButton.Kind.Primary || kind === AppButton.Kind.Destructive
    readonly property bool link: kind === AppButton.Kind.Link
    readonly property color ink: filled ? Theme.onFill : link ? Theme.accent : Theme.text
    readonly property color fill: {
        if (link)
            return "transparent";
        if (kind === AppButton.Kind.Destructive)
            return down || hovered ? Theme.dangerFillHover : Theme.dangerFill;
        if (kind === AppButton.Kind.Primary)
            return down || hovered ? Theme.accentFillHover : Theme.accentFill;
        return down ? Theme.pressed : hovered ? Theme.hover : Theme.field;
    }

    enabled: !busy
    font.family: Theme.family
    font.pixelSize: Theme.textBody
    font.weight: link ? Font.Normal : Font.DemiBold
    implicitHeight: link ? Math.max(implicitContentHeight, Theme.symbolLarge) : Theme.controlHeight
    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, link ? 0 : 2 * Theme.controlHeight)
    leftPadding: link ? 0 : Theme.spaceLarge
    rightPadding: leftPadding
    opacity: enabled || busy ? 1 : Theme.disabledOpacity
    spacing: Theme.spaceSmall
    focusPolicy: Qt.StrongFocus

    Accessible.name: busy ? busyText : text
    Accessible.onPressAction: if (root.enabled)
        root.clicked()
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    background: Rectangle {
        color: root.fill
        radius: Theme.radiusMedium

        Behavior on color {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        FocusRing {
            shown: root.visualFocus
            target: parent
        }
    }
    contentItem: Item {
        id: content

        readonly property int textWidth: Math.ceil(label.implicitWidth)
        readonly property int before: root.busy ? Theme.symbolSmall + root.spacing : root.symbol !== "" ? Theme.symbolMedium + root.spacing : 0

        implicitHeight: row.implicitHeight
        implicitWidth: before + textWidth

        Row {
            id: row

            anchors.centerIn: parent
            spacing: root.spacing

            Spinner {
                anchors.verticalCenter: parent.verticalCenter
                color: root.ink
                height: Theme.symbolSmall
                running: root.busy
                visible: root.busy
                width: height
            }

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                color: root.ink
                height: Theme.symbolMedium
                name: root.symbol
                visible: root.symbol !== "" && !root.busy
                width: height
            }

            Label {
                id: label

                anchors.verticalCenter: parent.verticalCenter
                Accessible.ignored: true
                color: root.ink
                font: root.font
                text: root.busy ? root.busyText : root.text
                width: Math.min(content.textWidth, content.width - content.before)
            }
        }

        Rectangle {
            anchors.bottom: parent.bottom
            anchors.left: row.left
            anchors.right: row.right
            color: root.ink
            height: 1
            visible: root.link && root.hovered
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
