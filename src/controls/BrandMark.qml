pragma ComponentBehavior: Bound
import QtQuick

/// The mark of the program: a sheet on its way up.
Item {
    id: root

    implicitHeight: 60
    implicitWidth: 60

    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        radius: width * 0.24

        gradient: Gradient {
            GradientStop {
                color: Theme.brandTop
                position: 0
            }

            GradientStop {
                color: Theme.brandBottom
                position: 1
            }
        }
    }

    Rectangle {
        antialiasing: true
        color: Theme.onFill
        height: parent.height * 0.12
        radius: height / 2
        width: parent.width * 0.5
        x: parent.width * 0.25
        y: parent.height * 0.7
    }

    Repeater {
        model: 2

        Rectangle {
            required property int index

            antialiasing: true
            color: Theme.onFill
            height: root.width * 0.12
            radius: height / 2
            rotation: index === 0 ? -42 : 42
            width: root.width * 0.34
            x: root.width * (index === 0 ? 0.215 : 0.445)
            y: root.height * 0.275
        }
    }

    Rectangle {
        color: Theme.onFill
        height: parent.height * 0.36
        radius: width / 2
        width: parent.width * 0.12
        x: parent.width * 0.44
        y: parent.height * 0.24
    }
}
