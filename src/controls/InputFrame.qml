import QtQuick

/// The background of every field that is typed into.
Rectangle {
    id: root

    required property bool focused
    property bool wrong: false

    border.color: focused ? Theme.focusRing : wrong ? Theme.danger : Theme.line
    border.width: focused || wrong ? Theme.focusWidth : 1
    color: Theme.field
    radius: Theme.radiusMedium
}
