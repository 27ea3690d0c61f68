import QtQuick
import Palvera.Controls
import Palvera.Update

/// What runs here, when it last looked for something newer, and what went wrong with that.
AppDialog {
    id: root

    required property AboutModel about

    title: qsTr("About Palvera")
    visible: about.open
    widest: 380
    onClosed: about.open = false
    onOpened: done.forceActiveFocus(Qt.TabFocusReason)

    contentItem: Column {
        readonly property bool modal: true ///< told to assistants

        spacing: Theme.spaceMedium

        Accessible.name: root.title
        Accessible.role: Accessible.Dialog

        BrandMark {
            anchors.horizontalCenter: parent.horizontalCenter
        }

        Label {
            Accessible.role: Accessible.Heading
            anchors.horizontalCenter: parent.horizontalCenter
            font.pixelSize: Theme.textTitle
            font.weight: Font.DemiBold
            text: qsTr("Palvera")
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Theme.secondary
            text: qsTr("Version %1").arg(root.about.versionText)
        }

        Fact {
            name: qsTr("Last check for updates")
            text: root.about.lastCheckText
        }

        Fact {
            ink: Theme.warning
            name: qsTr("Last failure")
            text: root.about.failureText
        }

        Disclosure {
            title: qsTr("Licences")
            width: parent.width

            Label {
                color: Theme.secondary
                font.pixelSize: Theme.textSmall
                text: qsTr("Palvera works with Qt (LGPL 3), Boost (Boost Software License), libcurl (curl licence), OpenSSL (Apache 2.0), libfido2 and libarchive (BSD), the symbols of Phosphor (MIT) and the typeface Inter (Open Font License).")
                width: parent.width
                wrapMode: Text.Wrap
            }

            AppButton {
                kind: AppButton.Kind.Link
                text: qsTr("Show their texts")
                visible: root.about.licences !== ""
                onClicked: Qt.openUrlExternally(root.about.licences)
            }
        }

        Item {
            height: Theme.spaceTiny
            width: 1
        }

        Row {
            spacing: Theme.spaceSmall
            width: parent.width

            AppButton {
                text: qsTr("Check for Updates…")
                width: parent.width - done.width - parent.spacing
                onClicked: root.about.checkForUpdates()
            }

            AppButton {
                id: done

                kind: AppButton.Kind.Primary
                text: qsTr("Close")
                onClicked: root.close()
            }
        }
    }

    component Fact: Column {
        id: fact

        required property string name
        property alias ink: words.color
        property alias text: words.text

        spacing: Theme.focusGap
        visible: text !== ""
        width: parent ? parent.width : 0

        Label {
            color: Theme.secondary
            font.pixelSize: Theme.textSmall
            text: fact.name
        }

        Words {
            id: words

            color: Theme.text
            mostLines: 6
            width: parent.width
        }
    }
}
