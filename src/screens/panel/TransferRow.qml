import QtQuick
import Palvera.Controls
import Palvera.Panel

/// One transfer of the panel.
Item {
    id: root

    required property string symbol
    required property string title
    required property string titleName
    required property string name
    required property int transferState
    required property bool inFlight
    required property double fraction
    required property string percent
    required property string figures
    required property string status
    required property string detail
    required property list<real> samples
    required property double graphFraction
    required property string spoken
    property bool separated: true

    signal stopping()

    readonly property bool running: transferState === TransferState.Running
    readonly property bool retrying: transferState === TransferState.Retrying
    readonly property color ink: {
        if (transferState === TransferState.Failed)
            return Theme.danger;
        if (transferState === TransferState.Stopped)
            return Theme.secondary;
        return retrying ? Theme.orange : transferState === TransferState.Done ? Theme.success : Theme.accent;
    }

    implicitHeight: column.implicitHeight + 2 * Theme.spaceMedium

    Accessible.name: spoken
    Accessible.role: Accessible.ListItem
    ListView.onPooled: visible = false
    ListView.onReused: visible = true

    SymbolIcon {
        id: glyph

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceMedium
        anchors.top: column.top
        color: root.ink
        height: Theme.symbolLarge + 2
        name: root.symbol
        width: height
    }

    Column {
        id: column

        anchors.left: glyph.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceTiny

        Item {
            height: titles.height
            width: parent.width

            Column {
                id: titles

                anchors.left: parent.left
                anchors.right: stop.visible ? stop.left : parent.right
                anchors.rightMargin: stop.visible ? Theme.spaceSmall : 0
                spacing: 1

                Label {
                    Accessible.ignored: true
                    font.weight: Font.Medium
                    text: root.title
                    width: parent.width
                }

                Label {
                    Accessible.ignored: true
                    color: Theme.secondary
                    font.pixelSize: Theme.textSmall
                    text: root.titleName
                    visible: text !== ""
                    width: parent.width
                }

                Label {
                    Accessible.ignored: true
                    color: Theme.secondary
                    elide: Text.ElideMiddle
                    font.pixelSize: Theme.textCaption
                    text: root.name
                    width: parent.width
                }
            }

            IconButton {
                id: stop

                anchors.right: parent.right
                anchors.rightMargin: -Theme.spaceSmall
                anchors.top: parent.top
                anchors.topMargin: -Theme.spaceTiny
                symbol: "stop.fill"
                symbolColor: Theme.secondary
                symbolSize: Theme.symbolMedium
                text: qsTr("Stop")
                visible: root.inFlight
                onClicked: root.stopping()
            }
        }

        ProgressLine {
            fill: root.retrying ? Theme.orange : Theme.accentFill
            label: root.title
            value: root.fraction
            visible: root.running || root.retrying
            width: parent.width
        }

        Row {
            spacing: 0
            visible: root.running
            width: parent.width

            Figures {
                id: percentage

                Accessible.ignored: true
                font.pixelSize: Theme.textSmall
                font.weight: Font.Medium
                text: root.percent
            }

            Figures {
                Accessible.ignored: true
                color: Theme.secondary
                font.pixelSize: Theme.textSmall
                text: " · " + root.figures
                width: parent.width - percentage.width
            }
        }

        Figures {
            id: said

            Accessible.ignored: true
            color: root.transferState === TransferState.Failed ? Theme.danger : Theme.secondary
            elide: Text.ElideRight
            font.pixelSize: Theme.textSmall
            maximumLineCount: 4
            text: root.status
            visible: text !== ""
            width: parent.width
            wrapMode: Text.Wrap

            HoverHandler {
                id: pointer
            }

            Tip {
                shown: pointer.hovered && root.detail !== ""
                text: root.detail
            }
        }

        Item {
            height: 34 + 2
            visible: root.samples.length > 1
            width: parent.width

            SpeedTrace {
                anchors.bottom: parent.bottom
                fraction: root.graphFraction
                samples: root.samples
                width: parent.width
            }
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        anchors.left: column.left
        anchors.right: parent.right
        color: Theme.line
        height: 1
        visible: root.separated
    }
}
