pragma ComponentBehavior: Bound

import QtQuick
import Qt.labs.qmlmodels
import Brimlo

// The suggestions, each with its details and items if expanded. Space toggles a row's tick, Left
// and Right collapse and expand, Return expands a suggestion or a folder and shows an item in the
// file manager.
ScrollList {
    id: view

    required property SuggestionRows rows

    function take(index) {
        currentIndex = index;
        forceActiveFocus(Qt.MouseFocusReason);
    }
    function fold(expanded) {
        const head = currentItem as SuggestionHead;
        const folder = currentItem as SuggestionFolderRow;
        const isExpanded = head?.expanded ?? folder?.expanded ?? expanded;
        if (isExpanded !== expanded)
            rows.toggleExpanded(currentIndex);
        else if (head === null && !expanded)
            currentIndex = rows.head(currentIndex);
        keyed = true;
    }
    function open(index) {
        rows.toggleExpanded(index);
        if (currentItem as SuggestionItemRow)
            rows.reveal(index);
    }

    // At a position in a row, or below the row if opened from the keyboard.
    function showMenu(index, at) {
        take(index);
        const item = itemAtIndex(index);
        menu.row = index;
        if (item !== null)
            menu.popup(item, at?.x ?? item.width / 3, at?.y ?? item.height);
    }

    label: qsTr("Suggestions")
    model: rows
    currentIndex: -1
    roomBelow: Theme.tight
    leftMargin: Theme.snug
    rightMargin: Theme.snug
    onOpened: index => open(index)
    Keys.onSpacePressed: rows.toggle(currentIndex)
    Keys.onLeftPressed: fold(false)
    Keys.onRightPressed: fold(true)
    Keys.onMenuPressed: showMenu(currentIndex)

    Shortcut {
        sequence: "Shift+F10"
        enabled: view.activeFocus
        onActivated: view.showMenu(view.currentIndex)
    }
    // The menu closes when the suggestions change, so that it never acts on a different one.
    Connections {
        target: view.rows

        function onFiguresChanged() {
            menu.close();
        }
    }
    PopupMenu {
        id: menu

        property int row: -1
        property bool isItem: false
        property bool isFile: false

        onAboutToShow: {
            isItem = view.rows.isItem(row);
            isFile = view.rows.isFile(row);
        }

        MenuEntry {
            text: qsTr("Reveal in %1").arg(Desktop.fileManager)
            symbol: "arrow.up.forward.square"
            enabled: menu.isFile
            onTriggered: view.rows.reveal(menu.row)
        }
        MenuEntry {
            text: qsTr("Copy Path")
            symbol: "doc.on.clipboard"
            enabled: menu.isFile
            onTriggered: view.rows.copyPath(menu.row)
        }
        MenuDivider {}
        MenuEntry {
            text: qsTr("Never Suggest This")
            symbol: "minus.circle"
            enabled: menu.isItem
            onTriggered: view.rows.leaveAlone(menu.row)
        }
        MenuEntry {
            text: qsTr("Never Suggest What This Rule Finds")
            symbol: "minus.circle"
            onTriggered: view.rows.leaveRuleAlone(menu.row)
        }
    }

    delegate: DelegateChooser {
        role: "kind"

        DelegateChoice {
            roleValue: "suggestion"

            SuggestionHead {
                onMenuWanted: at => view.showMenu(index, at)
                onClicked: {
                    view.take(index);
                    view.rows.toggleExpanded(index);
                }
                onTicked: {
                    view.take(index);
                    view.rows.toggle(index);
                }
            }
        }
        DelegateChoice {
            roleValue: "folder"

            SuggestionFolderRow {
                onMenuWanted: at => view.showMenu(index, at)
                onClicked: {
                    view.take(index);
                    view.rows.toggleExpanded(index);
                }
                onTicked: {
                    view.take(index);
                    view.rows.toggle(index);
                }
            }
        }
        DelegateChoice {
            roleValue: "item"

            SuggestionItemRow {
                onMenuWanted: at => view.showMenu(index, at)
                onClicked: {
                    view.take(index);
                    view.rows.toggle(index);
                }
                onRevealed: view.rows.reveal(index)
            }
        }
        DelegateChoice {
            roleValue: "details"

            SuggestionDetails {
                onMenuWanted: at => view.showMenu(index, at)
                onClicked: view.take(index)
                onWhyWanted: view.rows.toggleExpanded(index)
            }
        }
        DelegateChoice {
            roleValue: "more"

            SuggestionMore {
                onMenuWanted: at => view.showMenu(index, at)
                onClicked: view.take(index)
            }
        }
    }

    // How many items of a suggestion are not listed.
    component SuggestionMore: SuggestionRow {
        id: row

        required property int itemCount
        required property bool isInFolder

        text: qsTr("+ %1 more").arg(Format.count(itemCount))

        Label {
            text: row.text
            secondary: true
            leftPadding: row.isInFolder ? 34 + Theme.huge : 34
            Accessible.ignored: true
        }
    }
}
