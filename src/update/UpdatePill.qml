import QtQuick
import QtQuick.Templates as T
import Palvera.Controls
import Palvera.Update

/// A newer build, how far it has come, and what can be done with it.
T.Button {
    id: root

    required property UpdatePillModel pill
    readonly property bool calls: pill.text !== "" && pill.tappable && !pill.failed
    readonly property bool lit: hovered && pill.tappable
    readonly property color ink: pill.failed ? Theme.warning : calls && lit ? Theme.onFill : calls || pill.percent >= 0 ? Theme.accent : Theme.secondary

    font.family: Theme.family
    font.pixelSize: Theme.textSmall
    font.weight: Font.DemiBold
    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.symbolLarge + Theme.spaceSmall - Theme.focusGap
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.spaceMedium
    rightPadding: leftPadding
    text: pill.text

    Accessible.description: pill.tooltip
    Accessible.name: text
    Accessible.onPressAction: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    onClicked: pill.tap()

    background: Rectangle {
        color: root.pill.failed ? Theme.warningSoft : root.calls && root.lit ? Theme.accentFill : root.calls ? Theme.accentSoft : Theme.field
        radius: height / 2

        Behavior on color {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        Rectangle {
            color: Theme.accentSoft
            height: parent.height
            radius: height / 2
            visible: root.pill.percent >= 0
            width: height + (parent.width - height) * Math.max(0, root.pill.percent) / 100
        }

        FocusRing {
            radius: height / 2
            shown: root.visualFocus
            target: parent
        }
    }
    contentItem: Item {
        implicitHeight: row.implicitHeight
        implicitWidth: row.implicitWidth

        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.spaceTiny + 1

            Spinner {
                anchors.verticalCenter: parent.verticalCenter
                color: root.ink
                height: Theme.symbolSmall
                visible: root.pill.busy
                width: height
            }

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                color: root.ink
                height: Theme.symbolSmall + Theme.focusGap
                name: root.pill.symbol
                visible: name !== ""
                width: height
            }

            RollingFigures {
                anchors.verticalCenter: parent.verticalCenter
                color: root.ink
                font: root.font
                unit: qsTr("%")
                value: Math.max(0, root.pill.percent)
                visible: root.pill.percent >= 0
            }

            Label {
                Accessible.ignored: true
                anchors.verticalCenter: parent.verticalCenter
                color: root.ink
                font: root.font
                text: root.pill.text
                visible: root.pill.percent < 0
            }
        }
    }

    HoverHandler {
        cursorShape: root.pill.tappable ? Qt.PointingHandCursor : Qt.ArrowCursor
    }

    Tip {
        shown: root.hovered || root.visualFocus
        text: root.pill.tooltip
    }
}
