pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Palvera.Controls

ColumnLayout {
    spacing: Theme.spaceHuge

    RowLayout {
        spacing: Theme.spaceMedium

        AppButton {
            focus: true
            kind: AppButton.Kind.Primary
            text: "Continue"
            Component.onCompleted: forceActiveFocus(Qt.TabFocusReason)
        }

        AppButton {
            text: "Plain"
        }

        AppButton {
            kind: AppButton.Kind.Destructive
            symbol: "trash"
            text: "Delete"
        }

        AppButton {
            kind: AppButton.Kind.Link
            text: "Forgotten your password?"
        }

        AppButton {
            busy: true
            busyText: "Signing in"
            kind: AppButton.Kind.Primary
            text: "Continue"
        }

        AppButton {
            enabled: false
            text: "Not now"
        }
    }

    RowLayout {
        spacing: Theme.spaceMedium

        IconButton {
            outlined: true
            symbol: "GoogleMark"
            text: "Continue with Google"
        }

        IconButton {
            outlined: true
            symbol: "MicrosoftMark"
            text: "Continue with Microsoft"
        }

        IconButton {
            symbol: "arrow.clockwise"
            text: "Refresh"
        }

        IconButton {
            enabled: false
            symbol: "trash"
            text: "Remove"
        }

        Badge {
            text: "3"
        }

        Badge {
            color: Theme.successSoft
            ink: Theme.success
            text: "Accepted"
        }

        Badge {
            color: Theme.warningSoft
            ink: Theme.warning
            text: "In review"
        }

        Badge {
            color: Theme.dangerSoft
            ink: Theme.danger
            text: "Rejected"
        }

        Chip {
            symbol: "film.fill"
            text: "Video"
        }

        Chip {
            text: "English (United Kingdom)"
        }
    }

    ProgressLine {
        Layout.preferredWidth: 360
        label: "Sending"
        value: 0.42
    }

    ProgressLine {
        Layout.preferredWidth: 360
        label: "Preparing"
        value: -1
    }

    RowLayout {
        spacing: Theme.spaceHuge

        Spinner {}

        Spinner {
            Layout.preferredHeight: Theme.symbolMedium
            Layout.preferredWidth: Theme.symbolMedium
        }

        BrandMark {}

        BrandMark {
            Layout.preferredHeight: 32
            Layout.preferredWidth: 32
        }

        Logo {}
    }

    Disclosure {
        open: true
        title: "Cannot scan it? Enter this key instead"

        Label {
            color: Theme.secondary
            text: "JBSW Y3DP EHPK 3PXP"
        }
    }

    Item {
        Layout.fillHeight: true
    }
}
