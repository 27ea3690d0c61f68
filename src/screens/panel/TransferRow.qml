import QtQuick
import Palvera.Controls
import Palvera.Panel

/// One transfer of the panel. Enter does what is likeliest, Space pauses, Delete stops it or takes it off the list.
Item {
    id: root

    required property string key
    required property int index
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
    property string told: "" ///< to assistants, who read each change of what has the keyboard: not its figures
    property int toldState: -1

    signal chosen(int action)
    signal mainChosen()
    signal menuWanted(real x, real y)
    signal stepped(int rows) ///< up or down the list
    signal dragged(real y)

    readonly property bool running: transferState === TransferState.Running
    readonly property bool retrying: transferState === TransferState.Retrying
    readonly property bool paused: transferState === TransferState.Paused
    readonly property color ink: {
        if (transferState === TransferState.Failed)
            return Theme.danger;
        if (transferState === TransferState.Stopped || transferState === TransferState.Waiting || paused)
            return Theme.secondary;
        return retrying ? Theme.orange : transferState === TransferState.Done ? Theme.success : Theme.accent;
    }

    implicitHeight: column.implicitHeight + 2 * Theme.spaceMedium

    Accessible.description: ListView.view ? qsTr("%1 of %2").arg(index + 1).arg((ListView.view as ListView).count) : ""
    Accessible.name: told
    Accessible.role: Accessible.ListItem
    Accessible.onPressAction: mainChosen()
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    Component.onCompleted: tell()
    onActiveFocusChanged: tell()
    onSpokenChanged: {
        if (!activeFocus || toldState !== transferState)
            tell();
    }
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            mainChosen();
        else if (event.key === Qt.Key_Space)
            chosen(paused ? TransferAction.Resume : TransferAction.Pause);
        else if (event.key === Qt.Key_Delete)
            chosen(inFlight ? TransferAction.Stop : TransferAction.Remove);
        else if (event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)
            menuWanted(column.x, column.y + titles.height);
        else if (event.modifiers & Qt.ControlModifier && event.key === Qt.Key_Up)
            stepped(-1);
        else if (event.modifiers & Qt.ControlModifier && event.key === Qt.Key_Down)
            stepped(1);
        else
            event.accepted = false;
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.spaceTiny
        color: grip.pressed ? Theme.pressed : "transparent"
        radius: Theme.radiusMedium

        FocusRing {
            anchors.margins: 0
            radius: parent.radius
            shown: root.activeFocus
            target: parent
        }
    }

    function tell() {
        told = spoken;
        toldState = transferState;
    }

    TapHandler {
        onDoubleTapped: root.mainChosen()
        onTapped: root.forceActiveFocus(Qt.MouseFocusReason)
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: point => {
            root.forceActiveFocus(Qt.MouseFocusReason);
            root.menuWanted(point.position.x, point.position.y);
        }
    }

    MouseArea {
        id: grip

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: column.left
        anchors.top: parent.top
        cursorShape: pressed ? Qt.ClosedHandCursor : Qt.OpenHandCursor
        enabled: root.inFlight
        preventStealing: true // the list would take it for a flick
        onPositionChanged: mouse => root.dragged(mapToItem(root, mouse.x, mouse.y).y)
        onPressed: root.forceActiveFocus(Qt.MouseFocusReason)
    }

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
                anchors.right: root.inFlight ? buttons.left : parent.right
                anchors.rightMargin: root.inFlight ? Theme.spaceSmall : 0
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

            Row {
                id: buttons

                anchors.right: parent.right
                anchors.rightMargin: -Theme.spaceSmall
                anchors.top: parent.top
                anchors.topMargin: -Theme.spaceTiny
                visible: root.inFlight

                // The list is one stop of the keyboard: the row has keys for both.
                IconButton {
                    Accessible.name: qsTr("%1 %2").arg(text).arg(root.name)
                    focusPolicy: Qt.NoFocus
                    symbol: root.paused ? "play.fill" : "pause.fill"
                    symbolColor: Theme.secondary
                    symbolSize: Theme.symbolMedium
                    text: root.paused ? qsTr("Resume") : qsTr("Pause")
                    onClicked: root.chosen(root.paused ? TransferAction.Resume : TransferAction.Pause)
                }

                IconButton {
                    Accessible.name: qsTr("%1 %2").arg(text).arg(root.name)
                    focusPolicy: Qt.NoFocus
                    symbol: "stop.fill"
                    symbolColor: Theme.secondary
                    symbolSize: Theme.symbolMedium
                    text: qsTr("Stop")
                    onClicked: root.chosen(TransferAction.Stop)
                }
            }
        }

        ProgressLine {
            fill: root.retrying ? Theme.orange : root.paused ? Theme.secondary : Theme.accent
            label: root.title
            value: root.fraction
            visible: root.running || root.retrying || root.paused && root.percent !== ""
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
                text: (root.percent === "" ? "" : " · ") + root.figures
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
                shown: pointer.hovered && (root.detail !== "" || said.truncated)
                text: root.detail === "" ? root.status : root.detail
            }
        }

        Item {
            height: trace.height + Theme.focusGap
            visible: root.samples.length > 1
            width: parent.width

            SpeedTrace {
                id: trace

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
