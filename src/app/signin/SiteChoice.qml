import QtQuick
import Palvera.Controls
import Palvera.SignIn

/// Which of the platform's two sites to sign in to.
Column {
    id: root

    required property LoginModel login

    spacing: Theme.spaceSmall

    Label {
        anchors.horizontalCenter: parent.horizontalCenter
        color: Theme.secondary
        font.pixelSize: Theme.textSmall
        text: qsTr("Platform")
    }

    Segmented {
        anchors.horizontalCenter: parent.horizontalCenter
        current: root.login.liveSite ? 0 : 1
        enabled: !root.login.busy
        label: qsTr("Platform")
        options: [qsTr("Live"), qsTr("QA")]
        onChosen: index => root.login.chooseSite(index === 0)
    }

    Label {
        color: Theme.secondary
        font.pixelSize: Theme.textSmall
        horizontalAlignment: Text.AlignHCenter
        text: qsTr("One account works on both. Each keeps its own sign-in.")
        width: parent.width
        wrapMode: Text.Wrap
    }
}
