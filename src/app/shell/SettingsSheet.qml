pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Dialogs
import Palvera.Controls
import Palvera.Shell

/// All settings. Each holds as soon as it is changed.
AppDialog {
    id: root

    required property ShellModel shell
    readonly property SettingsModel settings: shell.settings

    title: qsTr("Settings")
    visible: shell.sheet === ShellModel.Settings
    widest: 560
    onClosed: shell.sheet = ShellModel.None
    onOpened: close.forceActiveFocus(Qt.TabFocusReason)

    contentItem: Column {
        readonly property bool modal: true ///< told to assistants

        spacing: Theme.spaceLarge

        Accessible.name: root.title
        Accessible.role: Accessible.Dialog

        Label {
            Accessible.role: Accessible.Heading
            font.pixelSize: Theme.textTitle
            font.weight: Font.DemiBold
            text: root.title
            width: parent.width
        }

        ScrollPage {
            contentHeight: groups.height
            height: Math.min(groups.height, (root.parent ? root.parent.height : 720) - Theme.grown(200))
            width: parent.width

            Column {
                id: groups

                spacing: Theme.spaceLarge
                width: parent.width - Theme.spaceMedium

                SettingGroup {
                    title: qsTr("Downloads")

                    SettingLine {
                        hint: root.settings.downloadsFolder === "" ? qsTr("Asked at the first download") : root.settings.downloadsFolder
                        separated: false
                        title: qsTr("Folder")

                        AppButton {
                            Accessible.name: qsTr("Change the downloads folder…")
                            text: qsTr("Change…")
                            onClicked: folder.open()
                        }
                    }
                }

                SettingGroup {
                    title: qsTr("Transfers")

                    SettingLine {
                        separated: false
                        title: qsTr("Uploads at once")

                        Count {
                            label: qsTr("Uploads at once")
                            value: root.settings.uploadsAtOnce
                            onChosen: count => root.settings.uploadsAtOnce = count
                        }
                    }

                    SettingLine {
                        title: qsTr("Downloads at once")

                        Count {
                            label: qsTr("Downloads at once")
                            value: root.settings.downloadsAtOnce
                            onChosen: count => root.settings.downloadsAtOnce = count
                        }
                    }

                    SettingLine {
                        hint: upRate.wrong ? qsTr("Give MB/s, from 0.1 on, or leave it empty.") : ""
                        title: qsTr("Upload limit, MB/s")

                        Rate {
                            id: upRate

                            label: qsTr("Upload limit, MB/s")
                            onEntered: rate => accept(root.settings.limitUploads(rate))
                            value: root.settings.uploadLimit
                        }
                    }

                    SettingLine {
                        hint: downRate.wrong ? qsTr("Give MB/s, from 0.1 on, or leave it empty.") : ""
                        title: qsTr("Download limit, MB/s")

                        Rate {
                            id: downRate

                            label: qsTr("Download limit, MB/s")
                            onEntered: rate => accept(root.settings.limitDownloads(rate))
                            value: root.settings.downloadLimit
                        }
                    }

                    SettingLine {
                        hint: from.wrong ? qsTr("Give times such as 08:00.") : qsTr("Off: the limits hold all day long.")
                        title: qsTr("Limit only between")

                        Field {
                            id: from

                            enabled: root.settings.limitedByHours
                            label: qsTr("Limit from")
                            onEntered: time => accept(root.settings.limitHours(time, to.text))
                            value: root.settings.limitFrom
                            width: Theme.grown(64)
                        }

                        Field {
                            id: to

                            enabled: root.settings.limitedByHours
                            label: qsTr("Limit to")
                            onEntered: time => accept(root.settings.limitHours(from.text, time))
                            value: root.settings.limitTo
                            width: Theme.grown(64)
                        }

                        Choice {
                            checked: root.settings.limitedByHours
                            text: qsTr("Limit only between")
                            onToggled: root.settings.limitedByHours = checked
                        }
                    }
                }

                SettingGroup {
                    title: qsTr("While files move")

                    SettingLine {
                        separated: false
                        title: qsTr("Keep the computer awake")

                        Choice {
                            checked: root.settings.keepsAwake
                            text: qsTr("Keep the computer awake")
                            onToggled: root.settings.keepsAwake = checked
                        }
                    }

                    SettingLine {
                        title: qsTr("Tell screen readers how far files are")

                        Choice {
                            checked: root.settings.announces
                            text: qsTr("Tell screen readers how far files are")
                            onToggled: root.settings.announces = checked
                        }
                    }

                    SettingLine {
                        title: qsTr("Notify when the last one has ended")

                        Choice {
                            checked: root.settings.notifies
                            text: qsTr("Notify when the last one has ended")
                            onToggled: root.settings.notifies = checked
                        }
                    }
                }

                SettingGroup {
                    title: qsTr("When the window is closed")

                    SettingLine {
                        hint: root.settings.background && !root.shell.hasTray ? qsTr("This desktop shows no tray, so that closing the window quits.") : qsTr("Palvera stays in the tray, and starts there with your session.")
                        separated: false
                        title: qsTr("Stay in the background")

                        Choice {
                            checked: root.settings.background
                            text: qsTr("Stay in the background")
                            onToggled: root.settings.background = checked
                        }
                    }
                }

                Words {
                    color: Theme.danger
                    text: root.settings.problem
                    visible: text !== ""
                    width: parent.width
                }
            }
        }

        AppButton {
            id: close

            anchors.right: parent.right
            kind: AppButton.Kind.Primary
            text: qsTr("Close")
            onClicked: root.close()
        }
    }

    FolderDialog {
        id: folder

        currentFolder: root.settings.proposedFolder
        title: qsTr("Choose where downloads go")
        onAccepted: root.settings.chooseDownloadsFolder(selectedFolder)
    }

    component Choice: Toggle {
        anchors.verticalCenter: parent.verticalCenter
    }

    component Count: Picker {
        property int value: 1

        signal chosen(int count)

        compact: true
        currentIndex: value - 1
        model: 16
        textRole: ""
        onActivated: index => chosen(index + 1)
        displayText: value
    }

    component Field: AppTextField {
        property string value: ""

        signal entered(string words)

        text: value
        width: Theme.grown(92)
        onEditingFinished: entered(text)
        onValueChanged: accept(true)

        /// What makes no sense stays, to be mended.
        function accept(makesSense: bool) {
            wrong = !makesSense;
            if (makesSense)
                text = Qt.binding(() => value);
        }
    }

    component Rate: Field {
        hint: qsTr("No limit")
        horizontalAlignment: TextInput.AlignRight
    }
}
