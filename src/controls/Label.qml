import QtQuick

/// A text in the program's face. Plain: what comes from elsewhere is shown, never obeyed.
Text {
    id: root

    color: Theme.text
    elide: wrapMode === Text.NoWrap ? Text.ElideRight : Text.ElideNone
    font.family: Theme.family
    font.pixelSize: Theme.textBody
    lineHeight: wrapMode === Text.NoWrap ? 1 : 1.3
    linkColor: Theme.accent
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
