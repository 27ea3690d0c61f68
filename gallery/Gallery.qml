pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Window
import Palvera.Controls

/// Every control in its states, a page for each kind.
Window {
    id: root

    property bool dark: false
    property int page: 0
    readonly property list<string> pages: ["Buttons", "Fields", "Rows", "Messages"]

    color: Theme.window
    height: 720
    title: "Palvera controls"
    visible: true
    width: 1000

    Binding {
        property: "dark"
        target: Theme
        value: root.dark
    }

    Toolbar {
        id: bar

        subtitle: root.pages[root.page]
        title: "Controls"
        width: parent.width

        trailing: [
            Segmented {
                current: root.page
                label: "Page"
                options: root.pages
                onChosen: index => root.page = index
            },
            IconButton {
                filled: true
                symbol: "arrow.up.arrow.down"
                text: "Transfers"
            },
            IconButton {
                id: account

                symbol: "person.crop.circle"
                text: "Account"
                onClicked: menu.popup(account, account.width - menu.width, account.height)

                AppMenu {
                    id: menu

                    MenuRow {
                        enabled: false
                        text: "ada@northlight.example"
                    }

                    MenuLine {}

                    MenuRow {
                        checked: root.dark
                        text: "Dark appearance"
                        onTriggered: root.dark = !root.dark
                    }

                    MenuRow {
                        text: "Sign out"
                    }
                }
            }
        ]
    }

    Loader {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.margins: Theme.spaceVast
        anchors.right: parent.right
        anchors.top: bar.bottom
        source: ["ButtonsPage.qml", "FieldsPage.qml", "RowsPage.qml", "MessagesPage.qml"][root.page]
    }
}
