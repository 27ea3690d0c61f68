import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// The filters above the list of deliverables, and how many they let through.
Item {
    id: root

    required property DeliverablesModel deliverables

    implicitHeight: filters.height + 2 * Theme.spaceMedium

    Flow {
        id: filters

        anchors.left: parent.left
        anchors.leftMargin: Theme.spaceLarge
        anchors.right: count.left
        anchors.rightMargin: Theme.spaceMedium
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spaceMedium

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

        AppButton {
            height: Theme.controlHeight - Theme.spaceTiny
            kind: AppButton.Kind.Link
            text: qsTr("Clear")
            Accessible.name: qsTr("Clear the filters")
            visible: root.deliverables.anyFilter
            onClicked: root.deliverables.clear()
        }
    }

    Figures {
        id: count

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceLarge
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        font.pixelSize: Theme.textSmall
        text: root.deliverables.countText
    }
}
