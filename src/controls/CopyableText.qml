import QtQuick
import Palvera.Controls

/// A text that the user may want to hand on: it is selected and copied with the mouse, the keyboard, or its menu.
TextEdit {
    id: root

    activeFocusOnTab: true
    color: Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.textBody
    persistentSelection: true
    readOnly: true
    selectByKeyboard: true
    selectByMouse: true
    selectedTextColor: Theme.onFill
    selectionColor: Theme.accentFill
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap

    Accessible.name: text
    Accessible.role: Accessible.StaticText
    Keys.onMenuPressed: menu.popup()
    onTextChanged: deselect()

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: menu.popup()
    }

    AppMenu {
        id: menu

        implicitWidth: Theme.grown(140)

        MenuRow {
            text: qsTr("Copy")
            onTriggered: {
                if (root.selectedText === "")
                    root.selectAll();
                root.copy();
            }
        }
    }

    FocusRing {
        parent: root
        radius: Theme.radiusSmall
        shown: root.activeFocus
        target: root
    }
}
