import QtQuick

/// A number or a word in a capsule.
Rectangle {
    id: root

    property string text: ""
    property color ink: Theme.onFill
    property bool spoken: true ///< by assistants; not where its text is part of another name

    color: Theme.accentFill
    implicitHeight: label.implicitHeight + Theme.focusGap
    implicitWidth: Math.max(implicitHeight, label.implicitWidth + 2 * Theme.spaceTiny + Theme.focusGap)
    radius: height / 2

    Label {
        id: label

        Accessible.ignored: !root.spoken
        anchors.centerIn: parent
        color: root.ink
        font.pixelSize: Theme.textCaption
        font.weight: Font.DemiBold
        text: root.text
    }
}
