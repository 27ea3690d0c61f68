import QtQuick

/// Contents, and at their end what can be done with them: below them, where little room would be left beside it.
Item {
    id: root

    default property alias content: body.data
    property alias actions: end.data
    property int least: Theme.grown(200) ///< room for the contents
    readonly property real taken: end.width > 0 ? end.width + Theme.spaceMedium : 0
    readonly property bool stacked: taken > 0 && width - taken < least

    implicitHeight: stacked ? body.height + Theme.spaceMedium + end.height : Math.max(body.height, end.height)

    Column {
        id: body

        spacing: Theme.focusGap
        width: root.stacked ? root.width : root.width - root.taken
        y: root.stacked ? 0 : Math.round((root.height - height) / 2)
    }

    Row {
        id: end

        spacing: Theme.spaceSmall
        x: root.stacked ? 0 : root.width - width
        y: root.stacked ? root.height - height : Math.round((root.height - height) / 2)
    }
}
