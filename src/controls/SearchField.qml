import QtQuick
import Palvera.Controls

/// A field that filters what stands below it. Escape empties it.
AppTextField {
    id: root

    inputMethodHints: Qt.ImhNoPredictiveText
    leftPadding: Theme.spaceSmall + glass.width + Theme.spaceSmall
    rightPadding: clearButton.visible ? clearButton.width : Theme.spaceMedium

    Accessible.searchEdit: true
    Keys.onEscapePressed: event => {
        event.accepted = text !== "";
        clear();
    }

    SymbolIcon {
        id: glass

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceSmall
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        height: Theme.symbolMedium
        name: "magnifyingglass"
        width: height
    }

    IconButton {
        id: clearButton

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        focusPolicy: Qt.NoFocus
        height: parent.height
        symbol: "xmark.circle.fill"
        symbolColor: Theme.secondary
        text: qsTr("Clear the search")
        visible: root.text !== ""
        onClicked: {
            root.clear();
            root.forceActiveFocus();
        }
    }
}
