pragma ComponentBehavior: Bound

import QtQuick
import QtQml
import QtQuick.Templates as T
import Brimlo

// The window's own menu, for systems without a menu bar.
PopupMenu {
    id: menu

    required property AppActions actions

    MenuEntry {
        text: qsTr("About Brimlo")
        symbol: "info.circle"
        onTriggered: menu.actions.aboutRequested()
    }
    MenuEntry {
        text: qsTr("Check for Updates…")
        symbol: "arrow.triangle.2.circlepath"
        enabled: Updater.canCheck
        onTriggered: menu.actions.checkForUpdates()
    }
    MenuEntry {
        text: qsTr("Keyboard Shortcuts")
        symbol: "list.bullet"
        shortcut: menu.actions.shortcutKeys[0]
        onTriggered: menu.actions.shortcutsRequested()
    }
    MenuDivider {}
    MenuEntry {
        text: qsTr("Rescan")
        symbol: "arrow.clockwise"
        shortcut: menu.actions.rescanKeys
        onTriggered: menu.actions.rescan()
    }
    MenuEntry {
        text: qsTr("Undo Last Clean")
        symbol: "arrow.uturn.backward"
        shortcut: menu.actions.undoKeys
        enabled: menu.actions.canUndo
        onTriggered: menu.actions.undo()
    }
    MenuDivider {}
    MenuHeading {
        text: qsTr("Go")
    }
    MenuDivider {}
    MenuEntry {
        text: qsTr("Quit")
        symbol: "xmark"
        shortcut: menu.actions.quitKeys
        onTriggered: menu.actions.quitRequested()
    }
    Instantiator {
        model: Sections.all
        onObjectAdded: (index, object) => menu.insertItem(8 + index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)

        MenuEntry {
            required property int index
            required property var modelData

            text: modelData.title
            symbol: modelData.symbol
            shortcut: menu.actions.goKeys(index)
            onTriggered: menu.actions.go(modelData.id)
        }
    }

    // The heading of the entries below it.
    component MenuHeading: T.MenuItem {
        id: heading

        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: Theme.rowHeight - 6
        leftPadding: 9
        rightPadding: 9
        enabled: false
        Accessible.role: Accessible.Heading
        Accessible.name: text

        contentItem: Eyebrow {
            text: heading.text
            color: Theme.secondaryText
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
}
