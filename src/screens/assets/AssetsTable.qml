pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Palvera.Controls
import Palvera.Assets

/// The table of assets: titles that its columns are drawn wider with, and rows that are walked and selected as in a file
/// manager.
FocusScope {
    id: root

    required property AssetsModel assets
    property string label: ""
    readonly property int loads: assets.loads

    signal leaving()

    onLoadsChanged: {
        list.currentIndex = -1;
        list.positionViewAtBeginning();
        list.currentIndex = list.count > 0 ? 0 : -1;
    }

    Binding {
        property: "scale"
        target: root.assets.columns
        value: Theme.scale
    }

    Row {
        id: titles

        height: Theme.controlHeight
        width: parent.width

        Label {
            color: Theme.secondary
            font.pixelSize: Theme.textSmall
            font.weight: Font.Medium
            height: parent.height
            leftPadding: Theme.spaceLarge
            text: qsTr("Name")
            verticalAlignment: Text.AlignVCenter
            width: root.assets.columns.name
        }

        ColumnHeader {
            text: qsTr("Deal")
            width: root.assets.columns.deal
            onDrawn: width => root.assets.columns.setWidth(AssetColumns.Deal, width)
        }

        ColumnHeader {
            text: qsTr("Type")
            width: root.assets.columns.type
            onDrawn: width => root.assets.columns.setWidth(AssetColumns.Type, width)
        }

        ColumnHeader {
            atEnd: true
            text: qsTr("Size")
            width: root.assets.columns.size
            onDrawn: width => root.assets.columns.setWidth(AssetColumns.Size, width)
        }

        ColumnHeader {
            text: qsTr("Date")
            width: root.assets.columns.date
            onDrawn: width => root.assets.columns.setWidth(AssetColumns.Date, width)
        }
    }

    Rectangle {
        id: line

        anchors.top: titles.bottom
        color: Theme.line
        height: 1
        width: parent.width
    }

    ListView {
        id: list

        readonly property int page: Math.max(1, Math.floor(height / Theme.tableRowHeight) - 1)

        activeFocusOnTab: count > 0 // an empty list shows nothing that has the keyboard
        anchors.bottom: more.top
        anchors.bottomMargin: more.visible ? 0 : Theme.spaceSmall
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: line.bottom
        anchors.topMargin: Theme.spaceTiny
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: 0 // as in RowList
        clip: true
        focus: true
        highlightMoveDuration: 0
        keyNavigationEnabled: false
        model: root.assets
        reuseItems: true

        Accessible.name: root.label
        Accessible.role: Accessible.List
        Keys.onPressed: event => event.accepted = root.act(event)
        onAtYEndChanged: {
            if (atYEnd && contentHeight > height)
                root.assets.reachEnd();
        }
        onCountChanged: {
            if (currentIndex < 0 && count > 0)
                currentIndex = 0;
        }
        onWidthChanged: root.assets.columns.available = width

        T.ScrollBar.vertical: AppScrollBar {}

        RowOrder {
            rows: list.contentItem
        }

        delegate: AssetTableRow {
            id: row

            columns: root.assets.columns
            count: list.count
            current: list.activeFocus && ListView.isCurrentItem
            width: ListView.view.width
            onMenuWanted: (x, y) => root.openMenu(index, row, x, y)
            onOpened: {
                list.currentIndex = index;
                root.activate(index);
            }
            onPointedAt: cell => {
                tip.parent = cell ?? list;
                tip.text = cell?.hint ?? "";
            }
            onPressed: modifiers => root.press(index, modifiers)
            onTryingAgain: root.assets.tryAgain(index)
        }
    }

    Item {
        id: more

        anchors.bottom: parent.bottom
        height: visible ? Theme.barHeight : 0
        visible: root.assets.hasMore || root.assets.loadingMore
        width: parent.width

        Rectangle {
            color: Theme.line
            height: 1
            width: parent.width
        }

        Row {
            anchors.centerIn: parent
            spacing: Theme.spaceMedium

            Label {
                Accessible.role: Accessible.AlertMessage
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.danger
                text: root.assets.moreError
                visible: text !== ""
            }

            Figures {
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.secondary
                text: root.assets.moreText
            }

            AppButton {
                anchors.verticalCenter: parent.verticalCenter
                busy: root.assets.loadingMore
                busyText: qsTr("Loading")
                kind: AppButton.Kind.Link
                text: qsTr("Load more")
                onClicked: root.assets.loadMore()
            }
        }
    }

    TipPopup {
        id: tip

        shown: text !== ""
    }

    TextEdit {
        id: clip

        Accessible.ignored: true
        visible: false
    }

    AssetsMenu {
        id: menu

        assets: root.assets
        onCopying: {
            clip.text = root.assets.nameAt(row);
            clip.selectAll();
            clip.copy();
        }
        onGoingBack: root.leaving()
        onOpening: root.activate(row)
    }

    function act(event: var): bool {
        const steps = {
            [Qt.Key_Up]: -1,
            [Qt.Key_Down]: 1,
            [Qt.Key_PageUp]: -list.page,
            [Qt.Key_PageDown]: list.page,
            [Qt.Key_Home]: -list.count,
            [Qt.Key_End]: list.count
        };
        const isControl = event.modifiers & Qt.ControlModifier;
        const row = list.currentIndex;
        if (steps[event.key] !== undefined && list.count > 0) {
            list.currentIndex = Math.min(list.count - 1, Math.max(0, row + steps[event.key]));
            if (event.modifiers & Qt.ShiftModifier)
                assets.selectTo(list.currentIndex);
            else if (!isControl)
                assets.select(list.currentIndex);
            if (list.currentIndex === list.count - 1)
                assets.reachEnd();
        } else if (event.key === Qt.Key_Space) {
            assets.toggle(row);
        } else if (isControl && event.key === Qt.Key_A) {
            assets.selectAll();
        } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
            activate(row);
        } else if (event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier) {
            if (list.currentItem)
                openMenu(row, list.currentItem, Theme.spaceVast, Theme.tableRowHeight);
        } else {
            return false;
        }
        return true;
    }

    function press(row: int, modifiers: int): void {
        list.forceActiveFocus(Qt.MouseFocusReason);
        list.currentIndex = row;
        if (modifiers & Qt.ShiftModifier)
            assets.selectTo(row);
        else if (modifiers & Qt.ControlModifier)
            assets.toggle(row);
        else
            assets.select(row);
    }

    function openMenu(row: int, item: var, x: real, y: real): void {
        list.forceActiveFocus(Qt.MouseFocusReason);
        list.currentIndex = row;
        if (!assets.isSelected(row))
            assets.select(row);
        menu.row = row;
        menu.opens = item.opens;
        menu.failed = item.failed;
        menu.popup(item, x, y);
    }

    /// Opens what opens, tries again what has failed and downloads the others: all that is selected where this is among
    /// it.
    function activate(row: int): void {
        if (assets.enter(row))
            return;
        if (list.currentItem && (list.currentItem as AssetTableRow).failed)
            return assets.tryAgain(row);
        if (!assets.isSelected(row))
            assets.select(row);
        assets.downloadSelected();
    }
}
