import QtQuick
import Brimlo

// The folder to scan next, and the menu to choose another.
ToolbarButton {
    id: button

    text: Places.name(AppModel.analyzer.scanRoot)
    symbol: "folder"
    hasMenu: true
    checked: menu.visible
    Accessible.description: AppModel.analyzer.scanRoot
    onClicked: menu.popup(button, 0, height + 4)

    PopupMenu {
        id: menu

        MenuEntry {
            text: qsTr("Home folder")
            symbol: "house"
            onTriggered: AppModel.analyzer.scanRoot = Places.home
        }
        MenuEntry {
            text: Desktop.bootVolume
            symbol: "internaldrive"
            onTriggered: AppModel.analyzer.scanRoot = "/"
        }
        MenuDivider {}
        MenuEntry {
            text: qsTr("Choose folder…")
            symbol: "folder"
            onTriggered: chooser.open()
        }
    }
    FolderChooser {
        id: chooser

        path: AppModel.analyzer.scanRoot
        onChosen: path => AppModel.analyzer.scanRoot = path
    }
}
