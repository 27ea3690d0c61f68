import QtQuick
import QtQuick.Templates as T

/// The words of a Tip.
T.ToolTip {
    id: root

    property bool shown: false
    property bool above: false

    delay: Theme.tipDelay
    font.family: Theme.family
    font.pixelSize: Theme.textSmall
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    implicitWidth: Math.min(Theme.grown(480), contentItem.implicitWidth + leftPadding + rightPadding)
    margins: Theme.spaceSmall
    padding: Theme.spaceSmall
    visible: shown && text !== ""
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: above ? -height - Theme.spaceTiny : parent ? parent.height + Theme.spaceTiny : 0

    background: Rectangle {
        border.color: Theme.line
        color: Theme.raised
        radius: Theme.radiusSmall
    }
    contentItem: Label {
        elide: Text.ElideRight
        font: root.font
        lineHeight: 1
        maximumLineCount: 12
        text: root.text
        wrapMode: Text.Wrap
    }
}
