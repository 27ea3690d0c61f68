pragma ComponentBehavior: Bound
import QtQuick
import Palvera.Controls

/// One filter: its title and what it is set to.
Row {
    id: root

    required property string title
    required property var choices ///< a model of values, labels and codes
    required property string value
    readonly property int place: choices.revision < 0 ? -1 : choices.indexOf(value) ///< looked up for each revision

    signal chosen(string value)

    spacing: Theme.spaceTiny + 2

    Label {
        Accessible.ignored: true
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        font.pixelSize: Theme.textSmall
        font.weight: Font.Medium
        text: root.title
    }

    Picker {
        id: picker

        anchors.verticalCenter: parent.verticalCenter
        codeRole: "code"
        compact: true
        currentIndex: root.place
        displayText: root.choices.labelOf(root.value)
        label: root.title
        model: root.choices
        textRole: "label"
        onActivated: index => {
            root.chosen(root.choices.valueAt(index));
            currentIndex = Qt.binding(() => root.place);
        }
    }
}
