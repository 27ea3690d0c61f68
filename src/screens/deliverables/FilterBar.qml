import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// The filters above the list of deliverables, and how many they let through.
Item {
    id: root

    required property DeliverablesModel deliverables

    implicitHeight: row.height + 2 * Theme.spaceMedium

    ActionRow {
        id: row

        actions: Figures {
            color: Theme.secondary
            font.pixelSize: Theme.textSmall
            text: root.deliverables.countText
        }
        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceLarge
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceLarge
        anchors.verticalCenter: parent.verticalCenter
        least: Theme.grown(400)

        Flow {
            spacing: Theme.spaceMedium
            width: parent.width

            FilterPicker {
                choices: root.deliverables.families
                title: qsTr("Family")
                value: root.deliverables.family
                onChosen: value => root.deliverables.family = value
            }

            FilterPicker {
                choices: root.deliverables.statuses
                title: qsTr("Status")
                value: root.deliverables.status
                onChosen: value => root.deliverables.status = value
            }

            FilterPicker {
                choices: root.deliverables.languages
                title: qsTr("Language")
                value: root.deliverables.language
                onChosen: value => root.deliverables.language = value
            }

            FilterPicker {
                choices: root.deliverables.fillings
                title: qsTr("Files")
                value: root.deliverables.filled
                onChosen: value => root.deliverables.filled = value
            }

            FilterPicker {
                choices: root.deliverables.orders
                title: qsTr("Order")
                value: root.deliverables.order
                onChosen: value => root.deliverables.order = value
            }

            AppButton {
                height: Theme.controlHeight - Theme.spaceTiny
                kind: AppButton.Kind.Link
                text: qsTr("Clear")
                Accessible.name: qsTr("Clear the filters")
                visible: root.deliverables.anyFilter
                onClicked: root.deliverables.clear()
            }
        }
    }
}
