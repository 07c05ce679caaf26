pragma ComponentBehavior: Bound

import QtQml
import Qt.labs.platform as Native
import Brimlo

// The menu bar of macOS. Roles move "About", "Check for Updates…" and "Quit" into the application
// menu.
Native.MenuBar {
    id: bar

    required property AppActions actions

    Native.Menu {
        title: qsTr("File")

        Native.MenuItem {
            text: qsTr("About Brimlo")
            role: Native.MenuItem.AboutRole
            onTriggered: bar.actions.aboutRequested()
        }
        Native.MenuItem {
            text: qsTr("Check for Updates…")
            role: Native.MenuItem.ApplicationSpecificRole
            enabled: Updater.canCheck
            onTriggered: bar.actions.checkForUpdates()
        }
        Native.MenuItem {
            text: qsTr("Keyboard Shortcuts")
            onTriggered: bar.actions.shortcutsRequested()
        }
        Native.MenuItem {
            text: qsTr("Rescan")
            onTriggered: bar.actions.rescan()
        }
        Native.MenuItem {
            text: qsTr("Undo Last Clean")
            enabled: bar.actions.canUndo
            onTriggered: bar.actions.undo()
        }
        Native.MenuItem {
            text: qsTr("Quit")
            role: Native.MenuItem.QuitRole
            onTriggered: bar.actions.quitRequested()
        }
    }
    Native.Menu {
        id: goMenu

        title: qsTr("Go")
    }
    Instantiator {
        model: Sections.all
        onObjectAdded: (index, object) => goMenu.insertItem(index, object)
        onObjectRemoved: (index, object) => goMenu.removeItem(object)

        Native.MenuItem {
            required property var modelData

            text: modelData.title
            onTriggered: bar.actions.go(modelData.id)
        }
    }
}
