import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A scrollable column, centred, at most `maximumWidth` wide.
Flickable {
    id: pane

    default property alias content: column.data
    property alias spacing: column.spacing
    property int padding: Theme.wide
    property int maximumWidth: 1200

    // Keeps the focused item visible; follows the window's active focus item.
    function reveal(item) {
        let up = item;
        while (up && up !== column)
            up = up.parent;
        if (!up)
            return;
        const at = item.mapToItem(contentItem, 0, 0).y;
        if (at < contentY)
            contentY = Math.max(0, at - Theme.normal);
        else if (at + item.height > contentY + height)
            contentY = Math.min(contentHeight - height, at + item.height + Theme.normal - height);
    }

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    contentWidth: width
    contentHeight: column.implicitHeight + 2 * padding
    implicitHeight: contentHeight
    implicitWidth: column.implicitWidth + 2 * padding

    ColumnLayout {
        id: column

        spacing: Theme.roomy
        y: pane.padding
        width: Math.min(pane.maximumWidth, pane.width - 2 * pane.padding)
        x: Math.round((pane.width - width) / 2)
    }
    Connections {
        target: pane.Window.window

        function onActiveFocusItemChanged() {
            const item = pane.Window.activeFocusItem;
            if (item && item !== pane)
                pane.reveal(item);
        }
    }
    T.ScrollBar.vertical: ScrollBar {}
}
