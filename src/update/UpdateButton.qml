import QtQuick
import Palvera.Controls
import Palvera.Update

/// The place of the pill in a toolbar; none while there is no newer build.
Item {
    id: root

    required property UpdatePillModel pill

    implicitHeight: Theme.controlHeight
    implicitWidth: capsule.implicitWidth + Theme.spaceSmall
    visible: pill.shown

    UpdatePill {
        id: capsule

        anchors.verticalCenter: parent.verticalCenter
        pill: root.pill
    }
}
