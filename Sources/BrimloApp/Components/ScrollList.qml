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

    // The space above the first row and below the last one.
    property int roomAbove: 0
    property int roomBelow: 0

    // The row under the pointer, which stays where it is while others come or go. Where the list is
    // too short for that, its ends get more room until the pointer leaves; one that was at its
    // beginning is so again then. A search begins at the top, wherever the pointer rests.
    property Item held: null
    property real heldAt: 0
    property real heldAbove: 0
    property real heldBelow: 0
    property bool heldAtBeginning: false

    // What was typed to find a row by its name; a pause begins anew.
    property string typed: ""

    signal opened(int index)

    function go(to) {
        currentIndex = Math.min(count - 1, Math.max(0, to));
        keyed = true;
    }
    function page() {
        return Math.max(1, Math.floor(height / Math.max(1, currentItem?.height ?? Theme.rowHeight)) - 1);
    }

    // Goes to the next row whose name begins with what was typed; the same letter again goes on.
    function find(letter) {
        if (!model?.rowBeginningWith)
            return;
        const begins = !pause.running || typed === letter;
        typed = begins ? letter : typed + letter;
        pause.restart();
        const row = model.rowBeginningWith(typed, currentIndex + (begins ? 1 : 0));
        if (row >= 0)
            go(row);
    }

    function hold() {
        if (held !== null)
            return;
        const at = mapFromItem(null, pointer.point.scenePosition);
        const isSearching = Window.activeFocusItem as TextInput !== null;
        held = pointer.hovered && !isSearching ? itemAt(at.x + contentX, at.y + contentY) : null;
        heldAt = (held?.y ?? 0) - contentY;
        heldAtBeginning = held !== null && (heldAtBeginning || atYBeginning);
        // The list learns of the change after this, and before the next frame.
        Qt.callLater(putBack);
    }

    // Its row is gone.
    function release(row) {
        if (held === row)
            held = null;
    }
    function putBack() {
        forceLayout();
        if (held === null)
            return;
        const wanted = held.y - heldAt;
        const first = originY - roomAbove;
        const last = Math.max(first, originY + contentHeight + roomBelow - height);
        held = null;
        heldAbove = Math.max(0, first - wanted);
        heldBelow = Math.max(0, wanted - last);
        contentY = wanted;
    }
    function settle() {
        heldAbove = 0;
        heldBelow = 0;
        if (heldAtBeginning)
            contentY = originY - topMargin;
        heldAtBeginning = false;
        returnToBounds();
    }

    topMargin: roomAbove + heldAbove
    bottomMargin: roomBelow + heldBelow
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    activeFocusOnTab: true
    highlightMoveDuration: 0
    highlightFollowsCurrentItem: true
    keyNavigationEnabled: true
    pixelAligned: true
    cacheBuffer: 200
    onMovementStarted: heldAtBeginning = false
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
            if (event.text <= " " || event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier))
                return;
            find(event.text);
        }
        event.accepted = true;
    }

    Timer {
        id: pause

        interval: 1000
    }
    PointHandler {
        id: touched

        onActiveChanged: if (active)
            list.keyed = false
    }
    HoverHandler {
        id: pointer

        onHoveredChanged: if (!hovered)
            list.settle()
    }
    Connections {
        target: list.model as QtObject
        ignoreUnknownSignals: true

        function onRowsAboutToBeInserted() {
            list.hold();
        }
        function onRowsAboutToBeRemoved() {
            list.hold();
        }
    }
    T.ScrollBar.vertical: ScrollBar {
        id: bar
    }
}
