import QtQuick
import Palvera.Controls

/// Leads back to the page before. A page that is opened anew later begins at `first`, not here.
AppButton {
    id: root

    property Item first: null

    kind: AppButton.Kind.Link
    symbol: "chevron.left"
    onClicked: {
        focus = false;
        if (first)
            first.focus = true;
    }
}
