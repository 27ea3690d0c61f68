import QtQuick
import Palvera.Controls
import Palvera.Deliverables

/// One row of the list of deliverables.
ListRow {
    id: root

    required property string key ///< the deliverable's id
    required property string title
    required property string details
    required property string badge
    required property bool moving
    required property bool still
    required property bool filed
    required property bool failed
    required property string tint
    required property string spoken
    required index
    required symbol

    description: spoken
    focusPolicy: Qt.NoFocus
    subtitle: details
    text: title
    tile: Qt.alpha(Theme.tint(root.tint), 0.12)
    tintColor: Theme.tint(root.tint)
    width: ListView.view.width

    trailing: StatusBadge {
        failed: root.failed
        filed: root.filed
        moving: root.moving
        still: root.still
        text: root.badge
    }

    ListView.onReused: opacity = 1
}
