import QtQuick
import Palvera.Controls
import Palvera.App

/// A page that is made when it is first shown, without holding up the window, and fades in and out from then on.
Loader {
    id: root

    required property RootModel model
    required property string file ///< of the page
    property bool shown: false

    asynchronous: true
    enabled: shown
    focus: shown
    opacity: shown && status === Loader.Ready ? 1 : 0
    visible: opacity > 0
    z: shown ? 1 : 0
    Component.onCompleted: makePage()
    onLoaded: item.focus = true
    onShownChanged: makePage()

    Behavior on opacity {
        NumberAnimation {
            duration: Theme.screenChange
            easing.type: Easing.InOutQuad
        }
    }

    function makePage() {
        if (shown && status === Loader.Null)
            setSource(file, {
                model: root.model
            });
    }
}
