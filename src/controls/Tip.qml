import QtQuick

/// What its parent is for, beside it, once the pointer or the keyboard has stayed there. The popup is made when it is
/// first shown: lists have many that nobody ever sees.
Item {
    id: root

    property bool shown: false
    property string text: ""
    property bool above: false
    property QtObject popup: null

    visible: false
    onShownChanged: {
        if (shown && !popup)
            popup = Qt.createComponent("TipPopup.qml").createObject(parent, {
                above: above,
                shown: Qt.binding(() => root.shown),
                text: Qt.binding(() => root.text)
            });
    }
}
