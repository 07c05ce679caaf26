import QtQuick
import QtQuick.Layouts
import Brimlo

// What lies above a window: a sheet, a popover and a menu, each shown by `which`.
Window {
    id: window

    property string which: "sheet"

    width: 860
    height: 640
    color: Theme.window
    visible: true

    OutlineButton {
        id: opener

        text: "Opener"
        x: 60
        y: 40
    }
    Popover {
        parent: opener
        presented: window.which === "popover"

        RiskLegend {
            Layout.preferredWidth: 400
        }
    }
    PopupMenu {
        id: menu

        MenuEntry {
            text: "Open Folder"
            symbol: "folder"
        }
        MenuEntry {
            text: "Reveal in Finder"
            symbol: "magnifyingglass"
            shortcut: "Ctrl+R"
        }
        MenuDivider {}
        MenuEntry {
            text: "Review & Move to Trash…"
            symbol: "trash"
            enabled: false
        }
        MenuEntry {
            text: "Size"
            checkable: true
            checked: true
        }
    }
    Sheet {
        presented: window.which === "sheet"
        symbol: "checkmark.shield"
        title: "Review before cleaning"
        subtitle: "12 items · 3.4 GB"
        defaultButton: clean
        footer: [
            Item {
                Layout.fillWidth: true
            },
            OutlineButton {
                text: "Cancel"
            },
            SolidButton {
                id: clean

                text: "Clean 3.4 GB"
                symbol: "sparkles"
            }
        ]

        ModeCards {
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.snug

            StatCard {
                value: "0 bytes"
                label: "Freed immediately"
                color: Theme.safe
            }
            StatCard {
                value: "3.4 GB"
                label: "Freed after emptying Trash"
                color: Theme.info
            }
        }
        Notice {
            text: "Some items may contain your own files. They stay in Trash and can be put back."
        }
    }
    Component.onCompleted: if (which === "menu")
        menu.popup(opener, 0, opener.height + 4)
}
