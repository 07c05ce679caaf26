import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A row of a list: highlighted under the pointer, tinted if selected, with a ring if it has
// keyboard focus.
T.ItemDelegate {
    id: row

    property bool selected: false
    default property alias content: line.data
    readonly property ScrollList list: ListView.view as ScrollList
    readonly property bool ringed: visualFocus || list !== null && list.keyed && list.activeFocus && ListView.isCurrentItem

    implicitWidth: line.implicitWidth + leftPadding + rightPadding
    width: list !== null ? list.width - list.gutter : ListView.view ? ListView.view.width : implicitWidth
    implicitHeight: Math.max(Theme.rowHeight, line.implicitHeight + topPadding + bottomPadding)
    leftPadding: Theme.snug
    rightPadding: Theme.snug
    spacing: Theme.snug
    focusPolicy: ListView.view ? Qt.NoFocus : Qt.StrongFocus
    hoverEnabled: true
    // Otherwise Space would click the row; the list decides what Space does.
    Keys.forwardTo: row.list !== null ? [row.list] : []
    // Hidden, because screen readers otherwise see pooled rows.
    ListView.onPooled: {
        visible = false;
        list?.release(row);
    }
    ListView.onReused: visible = true
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.onPressAction: if (enabled)
        row.clicked()

    contentItem: RowLayout {
        id: line

        spacing: row.spacing
    }
    background: HoverHighlight {
        selected: row.selected

        FocusRing {
            anchors.margins: 0
            radius: Theme.radius
            shown: row.ringed
        }
    }
}
