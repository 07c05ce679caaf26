import QtQuick
import QtQuick.Templates as T

// A view that scrolls up and down and keeps the focused item in sight.
Flickable {
    id: area

    // Follows the window's active focus item.
    function reveal(item) {
        let up = item;
        while (up && up !== contentItem)
            up = up.parent;
        if (!up)
            return;
        const at = item.mapToItem(contentItem, 0, 0).y;
        if (at < contentY)
            contentY = Math.max(0, at - Theme.normal);
        else if (at + item.height > contentY + height)
            contentY = Math.max(0, Math.min(contentHeight - height, at + item.height + Theme.normal - height));
    }

    boundsBehavior: Flickable.StopAtBounds
    contentWidth: width
    T.ScrollBar.vertical: ScrollBar {}

    Connections {
        target: area.Window.window

        function onActiveFocusItemChanged() {
            const item = area.Window.activeFocusItem;
            if (item && item !== area)
                area.reveal(item);
        }
    }
}
