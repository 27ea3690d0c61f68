pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Palvera.Controls

ColumnLayout {
    spacing: Theme.spaceLarge

    AppTextField {
        hint: "you@studio.example"
        Component.onCompleted: forceActiveFocus()
    }

    AppTextField {
        text: "ada@northlight.example"
    }

    AppTextField {
        text: "wrong@northlight"
        wrong: true
    }

    AppTextField {
        enabled: false
        text: "not now"
    }

    SecureField {
        hint: "Password"
        text: "open-sesame"
    }

    SecureField {
        revealed: true
        text: "open-sesame"
    }

    SearchField {
        hint: "Find a project"
    }

    SearchField {
        text: "salt"
    }

    Picker {
        label: "Language"
        model: ["English", "Deutsch", "Français"]
    }

    Segmented {
        label: "Platform"
        options: ["Live", "QA"]
    }

    Item {
        Layout.fillHeight: true
    }
}
