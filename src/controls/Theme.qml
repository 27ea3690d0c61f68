pragma Singleton
import QtQuick

/// Every colour, radius, space, type size and duration of the program.
QtObject {
    // Set by the program, which follows the desktop.
    property bool dark: false
    /// No movement but what shows that something goes on.
    property bool still: false
    /// How much larger texts are than as designed, and what must grow with them. Spaces and radii stay.
    property real scale: 1

    // Surfaces, from the back to the front.
    readonly property color window: dark ? "#1b1c1f" : "#f4f4f6"
    readonly property color bar: dark ? "#222327" : "#fbfbfc"
    readonly property color surface: dark ? "#26272b" : "#ffffff"
    readonly property color raised: dark ? "#2e2f34" : "#ffffff"
    readonly property color field: dark ? "#34353a" : "#ebebee"
    readonly property color chosen: dark ? "#53545c" : "#ffffff"
    readonly property color hover: dark ? "#313237" : "#f1f1f4"
    readonly property color pressed: dark ? "#3a3b41" : "#e4e4e9"
    readonly property color line: dark ? "#3c3d43" : "#dfdfe5"
    readonly property color scrim: dark ? "#99000000" : "#4d101014"
    readonly property color shadow: dark ? "#000000" : "#1a1a2e"

    // Texts, and symbols that stand for them.
    readonly property color text: dark ? "#f2f2f4" : "#1b1b1f"
    readonly property color secondary: dark ? "#b3b4bc" : "#5b5b64"
    readonly property color placeholder: dark ? "#a6a7af" : "#65656e"
    readonly property color accent: dark ? "#7ab8ff" : "#0b5cd5"
    readonly property color danger: dark ? "#ff8a84" : "#b3261e"
    readonly property color success: dark ? "#5fd38d" : "#146c35"
    readonly property color warning: dark ? "#ffc266" : "#8a4b00"

    // Fills, and what is written on them.
    readonly property color accentFill: dark ? "#2470e0" : "#0b63e5"
    readonly property color accentFillHover: dark ? "#2f69c9" : "#0a58cc"
    readonly property color dangerFill: dark ? "#c73a34" : "#c42b23"
    readonly property color dangerFillHover: dark ? "#b2332e" : "#ac251e"
    readonly property color onFill: "#ffffff"
    readonly property color brandTop: "#4da3ff"
    readonly property color brandBottom: "#0b4fd0"
    readonly property color paper: "#ffffff" ///< behind what a camera reads
    readonly property color accentSoft: dark ? "#22344d" : "#e4eefd"
    readonly property color warningFill: dark ? "#9a5a0c" : "#a35200"
    readonly property color warningSoft: dark ? "#40331d" : "#fdf0dc"
    readonly property color successSoft: dark ? "#1d3a2a" : "#e1f3e7"
    readonly property color dangerSoft: dark ? "#452726" : "#fce6e4"
    readonly property color green: dark ? "#5fd38d" : "#1a7f42"
    readonly property color orange: dark ? "#ffb057" : "#b45309"
    readonly property color focusRing: dark ? "#7ab8ff" : "#3d86f0"
    readonly property real disabledOpacity: 0.45

    readonly property int radiusSmall: 6
    readonly property int radiusMedium: 9
    readonly property int radiusLarge: 16

    readonly property int spaceTiny: 4
    readonly property int spaceSmall: 8
    readonly property int spaceMedium: 12
    readonly property int spaceLarge: 16
    readonly property int spaceHuge: 24
    readonly property int spaceVast: 36

    readonly property int controlHeight: 18 + grown(16)
    readonly property int rowHeight: 26 + grown(34)
    readonly property int tableRowHeight: 17 + grown(31)
    readonly property int barHeight: 16 + controlHeight
    readonly property int focusWidth: 2
    readonly property int focusGap: 2

    readonly property string family: "Inter"
    readonly property string figures: "Palvera Figures" ///< the same with digits of one width
    readonly property string code: "monospace" ///< the desktop's
    readonly property int textCaption: grown(11)
    readonly property int textSmall: grown(12)
    readonly property int textBody: grown(13)
    readonly property int textRow: grown(14)
    readonly property int textHeading: grown(17)
    readonly property int textTitle: grown(20)
    readonly property int textDisplay: grown(26)
    readonly property int symbolSmall: grown(14)
    readonly property int symbolMedium: grown(18)
    readonly property int symbolLarge: grown(22)
    readonly property int tile: grown(36) ///< what a symbol stands on, or a large one beside a text
    readonly property int symbolHuge: 44 ///< by itself

    readonly property int quick: still ? 0 : 120
    readonly property int faceChange: still ? 0 : 250
    readonly property int screenChange: still ? 0 : 260
    readonly property int entrance: still ? 0 : 320
    readonly property int tipDelay: 600

    /// A size that grows with the texts, in whole pixels.
    function grown(size: real): int {
        return Math.round(size * scale);
    }

    /// The tint of that name, for symbols.
    function tint(name: string): color {
        switch (name) {
        case "blue":
            return dark ? "#7ab8ff" : "#1d63d8";
        case "purple":
            return dark ? "#c4a1ff" : "#8338ec";
        case "orange":
            return orange;
        case "pink":
            return dark ? "#ff8fc1" : "#c2347a";
        case "teal":
            return dark ? "#5fd3c7" : "#0f766e";
        case "indigo":
            return dark ? "#a9acff" : "#4f46e5";
        default:
            return secondary;
        }
    }
}
