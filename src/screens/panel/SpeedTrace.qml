import QtQuick
import Palvera.Controls
import Palvera.Panel

/// How fast a transfer has been over its whole life.
Rectangle {
    id: root

    required property list<real> samples ///< bytes per second, oldest first
    property real fraction: 1 ///< how much of the width the graph may use

    color: Qt.alpha(Theme.text, 0.04)
    implicitHeight: Theme.grown(34)
    radius: 5

    Accessible.ignored: true

    Figures {
        Accessible.ignored: true
        anchors.right: canvas.left
        anchors.rightMargin: 2
        anchors.top: parent.top
        color: Theme.secondary
        font.pixelSize: Theme.grown(8)
        text: canvas.peakText
    }

    Figures {
        Accessible.ignored: true
        anchors.bottom: parent.bottom
        anchors.right: canvas.left
        anchors.rightMargin: 2
        color: Theme.secondary
        font.pixelSize: Theme.grown(8)
        text: "0"
    }

    SpeedTraceCanvas {
        id: canvas

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: Theme.grown(26)
        anchors.right: parent.right
        anchors.top: parent.top
        color: Theme.text
        fraction: root.fraction
        samples: root.samples
    }
}
