import QtQuick
import QtQuick.Templates as T

// A menu item; with `checkable` it shows whether it is the current choice.
T.MenuItem {
    id: entry

    property string symbol
    property string shortcut

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.rowHeight - 2
    leftPadding: 9
    rightPadding: 9
    hoverEnabled: true
    onImplicitWidthChanged: (menu as PopupMenu)?.widen()  // The width is known only once the menu is visible.
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.onPressAction: entry.triggered()

    contentItem: MenuLine {
        text: entry.text
        symbol: entry.symbol
        shortcut: entry.shortcut
        checkable: entry.checkable
        checked: entry.checked
    }
    background: Rectangle {
        radius: 5
        color: entry.highlighted && entry.enabled ? Theme.selection : "transparent"
    }
}
