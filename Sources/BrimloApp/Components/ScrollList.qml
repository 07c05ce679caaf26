import QtQuick
import QtQuick.Templates as T

// A list with our scroll bar and all the keys. A row shows the focus with the help of
// `ListView.view.keyed` and `ListView.isCurrentItem`, as `ListRow` does.
ListView {
    id: list

    property string label

    // Whether the last input was the keyboard, so that the current row must be visible.
    property bool keyed: false

    // The space that rows leave for the scroll bar at their right.
    readonly property int gutter: bar.visible ? bar.width : 0

    signal opened(int index)

    function go(to) {
        currentIndex = Math.min(count - 1, Math.max(0, to));
        keyed = true;
    }
    function page() {
        return Math.max(1, Math.floor(height / Math.max(1, currentItem?.height ?? Theme.rowHeight)) - 1);
    }

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    activeFocusOnTab: true
    highlightMoveDuration: 0
    highlightFollowsCurrentItem: true
    keyNavigationEnabled: true
    pixelAligned: true
    cacheBuffer: 200
    onActiveFocusChanged: {
        keyed = activeFocus && !touched.active;
        if (keyed && currentIndex < 0 && count > 0)
            currentIndex = 0;
    }
    Accessible.role: Accessible.List
    Accessible.name: label

    Keys.onPressed: event => {
        keyed = true;
        switch (event.key) {
        case Qt.Key_Home:
            go(0);
            break;
        case Qt.Key_End:
            go(count - 1);
            break;
        case Qt.Key_PageUp:
            go(currentIndex - page());
            break;
        case Qt.Key_PageDown:
            go(currentIndex + page());
            break;
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (currentIndex < 0)
                return;
            opened(currentIndex);
            break;
        default:
            return;
        }
        event.accepted = true;
    }

    PointHandler {
        id: touched

        onActiveChanged: if (active)
            list.keyed = false
    }
    T.ScrollBar.vertical: ScrollBar {
        id: bar
    }
}
