import QtQuick

/// A text with numbers that change: its digits have one width, so that nothing moves when they do.
Label {
    font.family: Theme.figures
}
