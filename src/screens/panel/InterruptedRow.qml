import QtQuick
import Palvera.Controls

/// A transfer that was cut off, and what can become of it. Enter does what is likeliest, Delete discards it.
Item {
    id: root

    required property int index
    required property string symbol
    required property string filename
    required property string place
    required property string progress
    required property string spoken
    required property bool sourceGone

    signal resumed()
    signal located()
    signal discarded()

    implicitHeight: texts.implicitHeight + 18

    Accessible.description: ListView.view ? qsTr("%1 of %2").arg(index + 1).arg((ListView.view as ListView).count) : ""
    Accessible.name: spoken
    Accessible.role: Accessible.ListItem
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            goOn();
        else if (event.key === Qt.Key_Delete)
            discarded();
        else
            event.accepted = false;
    }

    function goOn() {
        if (sourceGone)
            located();
        else
            resumed();
    }

    FocusRing {
        anchors.margins: Theme.spaceTiny
        radius: Theme.radiusMedium
        shown: root.activeFocus
        target: root
    }

    SymbolIcon {
        id: glyph

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.orange
        height: Theme.symbolLarge
        name: root.symbol
        width: height
    }

    Column {
        id: texts

        anchors.left: glyph.right
        anchors.leftMargin: 10
        anchors.right: resume.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Label {
            Accessible.ignored: true
            elide: Text.ElideMiddle
            text: root.filename
            width: parent.width
        }

        Label {
            Accessible.ignored: true
            color: Theme.secondary
            font.pixelSize: Theme.textSmall
            text: root.place
            visible: text !== ""
            width: parent.width
        }

        Figures {
            Accessible.ignored: true
            color: root.sourceGone ? Theme.warning : Theme.secondary
            elide: Text.ElideRight
            font.pixelSize: Theme.textSmall
            maximumLineCount: 4
            text: root.progress
            width: parent.width
            wrapMode: Text.Wrap
        }
    }

    AppButton {
        id: resume

        Accessible.name: qsTr("%1 %2").arg(text).arg(root.filename)
        anchors.right: discard.left
        anchors.rightMargin: Theme.spaceTiny
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: Theme.controlHeight - Theme.spaceTiny
        text: root.sourceGone ? qsTr("Locate…") : qsTr("Resume")
        onClicked: root.goOn()
    }

    IconButton {
        id: discard

        Accessible.name: qsTr("%1 %2").arg(text).arg(root.filename)
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceTiny
        anchors.verticalCenter: parent.verticalCenter
        symbol: "trash"
        symbolColor: Theme.secondary
        symbolSize: Theme.symbolMedium
        text: qsTr("Discard")
        onClicked: root.discarded()
    }

    Rectangle {
        anchors.bottom: parent.bottom
        color: Theme.line
        height: 1
        width: parent.width
    }
}
