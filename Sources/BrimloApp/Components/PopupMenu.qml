pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

// A menu of `MenuEntry` and `MenuDivider`: `popup()` at the pointer, `popup(item, x, y)` at a place.
T.Menu {
    id: menu

    // The width of the widest entry.
    property int entryWidth: 180

    // The item that had focus before the menu opened, and gets it back.
    property Item before: null

    function widen() {
        let most = 180;
        for (let i = 0; i < count; ++i)
            most = Math.max(most, itemAt(i)?.implicitWidth ?? 0);
        entryWidth = Math.min(most, 420);
    }

    implicitWidth: entryWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 8
    padding: 5
    modal: false
    onAboutToShow: {
        before = parent?.Window.activeFocusItem ?? null;
        widen();
    }
    onAboutToHide: before?.forceActiveFocus(Qt.PopupFocusReason)

    delegate: MenuEntry {}
    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: contentHeight > height
        clip: true
        currentIndex: menu.currentIndex
        T.ScrollBar.vertical: ScrollBar {}
    }
    background: PopupGround {
        radius: Theme.radius + 2
    }
}
