import QtQuick

/// The ring around a control that has the keyboard. `target` is what it surrounds.
Rectangle {
    id: root

    required property Item target
    property bool shown: false

    anchors.fill: target
    anchors.margins: -(Theme.focusGap + Theme.focusWidth)
    border.color: Theme.focusRing
    border.width: Theme.focusWidth
    color: "transparent"
    radius: Theme.radiusSmall + Theme.focusGap + Theme.focusWidth
    visible: shown
}
