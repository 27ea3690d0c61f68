pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls
import Palvera.App

/// Where the user chooses the client whose work to do.
FocusScope {
    id: root

    required property OrgPickerModel orgs
    property string error ///< why there may be none, for the user
    property bool loading: false ///< they are on their way
    property alias notices: above.data
    property alias toolbarItems: bar.trailing

    signal chosen(int row)
    signal retried()

    Toolbar {
        id: bar

        leading: Logo {}
        width: parent.width
    }

    Item {
        id: page

        anchors.bottom: parent.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: bar.bottom
        width: Math.min(Theme.grown(720), parent.width - 2 * Theme.spaceHuge)

        Label {
            id: heading

            Accessible.role: Accessible.Heading
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.topMargin: Theme.spaceHuge
            font.pixelSize: Theme.textDisplay
            font.weight: Font.DemiBold
            text: qsTr("Choose a client")
        }

        Column {
            id: above

            anchors.top: heading.bottom
            anchors.topMargin: height > 0 ? Theme.spaceLarge : 0
            width: parent.width
        }

        Card {
            id: card

            anchors.top: above.bottom
            anchors.topMargin: Theme.spaceLarge
            height: Math.min(list.contentHeight + 2 * Theme.spaceSmall, parent.height - y - Theme.spaceHuge)
            visible: list.count > 0
            width: parent.width

            Entrance {
                target: card
            }

            RowList {
                id: list

                anchors.fill: parent
                anchors.margins: Theme.spaceSmall
                focus: true
                label: heading.text
                model: root.orgs

                delegate: ListRow {
                    required property string name
                    required index

                    focusPolicy: Qt.NoFocus
                    separated: index < list.count - 1
                    symbol: "building.2.fill"
                    text: name
                    width: ListView.view.width
                    onClicked: root.chosen(index)
                }
            }
        }

        Column {
            anchors.centerIn: parent
            spacing: Theme.spaceLarge
            visible: root.loading && list.count === 0

            Spinner {
                anchors.horizontalCenter: parent.horizontalCenter
            }

            Label {
                color: Theme.secondary
                text: qsTr("Loading your clients…")
            }
        }

        Message {
            action: qsTr("Try again")
            anchors.centerIn: parent
            detail: root.error !== "" ? root.error : qsTr("Nobody has shared work with you yet.")
            icon: root.error !== "" ? "exclamationmark.triangle" : "building.2.fill"
            title: root.error !== "" ? qsTr("Could not load your clients") : qsTr("No clients")
            visible: !root.loading && list.count === 0
            onActed: root.retried()
        }
    }
}
