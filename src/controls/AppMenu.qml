import QtQuick
import QtQuick.Templates as T

/// A menu that drops from a button, of which it has its name unless it has a title. Its items are MenuRow and MenuLine.
T.Menu {
    id: root

    font.family: Theme.family
    font.pixelSize: Theme.textBody
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    implicitWidth: Theme.grown(240)
    margins: Theme.spaceSmall
    padding: Theme.spaceTiny + 1
    onAboutToShow: contentItem.parent.Accessible.name = title === "" ? parent.Accessible.name : title
    onClosed: parent.forceActiveFocus(Qt.PopupFocusReason)

    enter: Transition {
        NumberAnimation {
            duration: Theme.quick
            from: 0
            property: "opacity"
            to: 1
        }
    }
    background: Item {
        Shadow {
            anchors.fill: parent
            radius: Theme.radiusMedium
        }

        Rectangle {
            anchors.fill: parent
            border.color: Theme.line
            color: Theme.raised
            radius: Theme.radiusMedium
        }
    }
    contentItem: ListView {
        clip: contentHeight > height
        currentIndex: root.currentIndex
        highlightMoveDuration: 0
        implicitHeight: contentHeight
        interactive: contentHeight > height
        model: root.contentModel
    }
}
