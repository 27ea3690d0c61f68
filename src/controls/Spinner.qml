import QtQuick
import Palvera.Controls

/// Something goes on, nobody knows for how long.
Item {
    id: root

    property color color: Theme.secondary
    property bool running: true
    readonly property bool turning: running && visible
    property bool counted: false

    function count() {
        if (turning === counted)
            return;
        counted = turning;
        SpinnerBeat.spinners += turning ? 1 : -1;
    }

    implicitHeight: Theme.symbolHuge
    implicitWidth: Theme.symbolHuge

    Accessible.name: qsTr("Busy")
    Accessible.role: Accessible.Animation

    onTurningChanged: count()
    Component.onCompleted: count()
    Component.onDestruction: {
        if (counted)
            SpinnerBeat.spinners -= 1;
    }

    SpinnerCanvas {
        anchors.fill: parent
        color: root.color
        step: root.turning ? SpinnerBeat.step : 0
    }
}
