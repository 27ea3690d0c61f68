import QtQuick
import Palvera.Controls
import Palvera.App

/// Who is signed in, and the way out. The menu is made when it is first wanted: every page has one.
IconButton {
    id: root

    required property RootModel model
    property AccountRows menu: null

    symbol: "person.crop.circle"
    text: qsTr("Account")
    visible: model.userEmail !== ""
    onClicked: {
        if (!menu)
            menu = Qt.createComponent("AccountRows.qml").createObject(root, {
                model: model
            });
        menu.popup(root, root.width - menu.width, root.height + Theme.spaceTiny);
    }
}
