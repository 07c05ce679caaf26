pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// The actions of the menus and shortcuts, defined once.
Item {
    id: actions

    readonly property string rescanKeys: "Ctrl+R"
    readonly property string undoKeys: "Ctrl+Z"
    readonly property string quitKeys: "Ctrl+Q"
    readonly property var shortcutKeys: ["Ctrl+?", "F1"]
    readonly property bool canUndo: AppModel.banner.undoesChange || AppModel.cleanup.lastReport.canUndo && AppModel.busy === ""

    signal aboutRequested
    signal shortcutsRequested
    signal quitRequested

    function checkForUpdates() {
        Updater.checkForUpdates();
        go(Sections.Settings);
    }
    function rescan() {
        AppModel.rescan();
    }
    function undo() {
        AppModel.undo();
    }
    function go(section) {
        AppModel.section = section;
    }
    function goKeys(place) {
        return "Ctrl+" + (place + 1);
    }

    Shortcut {
        sequence: actions.rescanKeys
        onActivated: actions.rescan()
    }
    Shortcut {
        sequence: actions.undoKeys
        enabled: actions.canUndo
        onActivated: actions.undo()
    }
    Shortcut {
        sequences: actions.shortcutKeys
        onActivated: actions.shortcutsRequested()
    }
    Shortcut {
        sequence: actions.quitKeys
        onActivated: actions.quitRequested()
    }
    Repeater {
        model: Sections.all

        Item {
            id: place

            required property int index
            required property var modelData

            Shortcut {
                sequence: actions.goKeys(place.index)
                onActivated: actions.go(place.modelData.id)
            }
        }
    }
}
