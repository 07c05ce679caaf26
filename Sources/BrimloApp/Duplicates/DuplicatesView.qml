pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The groups of equal files below a folder.
Screen {
    id: screen

    readonly property DuplicateSearch search: AppModel.duplicates
    readonly property DuplicateRows rows: search.rows

    focus: true
    title: qsTr("Duplicates")

    FolderDrop {
        parent: screen
        invitation: qsTr("Drop the folder to search it")
        onFolderDropped: address => screen.search.findInDropped(address)
    }
    DisposeSheet {
        review: screen.search.review
    }
    SearchScreens {
        isBusy: screen.search.isSearching
        hasResults: !screen.search.isSearching && screen.rows.groupCount > 0
        Layout.fillWidth: true
        Layout.fillHeight: true

        busy: SearchingState {
            width: parent.width
            title: qsTr("Comparing files…")
            path: screen.search.root
            line: qsTr("Large folders can take a minute or two.")
            Keys.onEscapePressed: screen.search.cancel()

            OutlineButton {
                text: qsTr("Cancel")
                focus: true
                onClicked: screen.search.cancel()
            }
        }
        start: DuplicatesStart {
            anchors.fill: parent
        }
        results: ColumnLayout {
            anchors.fill: parent
            spacing: 0

            ResultsBar {
                folder: screen.search.root
                text: screen.rows.shownCount < screen.rows.groupCount ? qsTr("%1 of %2 groups of identical files").arg(Format.count(screen.rows.shownCount)).arg(Format.count(screen.rows.groupCount)) : screen.rows.groupCount === 1 ? qsTr("1 group of identical files") : qsTr("%1 groups of identical files").arg(Format.count(screen.rows.groupCount))
                line: (screen.search.hasSearched ? qsTr("%1 reclaimable") : qsTr("%1 reclaimable so far; the search was cancelled")).arg(Format.bytes(screen.rows.reclaimable))
                onFolderChosen: path => screen.search.root = path
                onSearchWanted: screen.search.find()
                Layout.fillWidth: true
            }
            DuplicateScope {
                onChanged: screen.search.find()
                Layout.fillWidth: true
                Layout.leftMargin: Theme.wide
                Layout.rightMargin: Theme.wide
                Layout.bottomMargin: Theme.tight
            }
            DuplicateChoice {
                id: choice

                // The pressed chip is removed, so the focus returns to the list.
                onReleased: list.forceActiveFocus()
                Layout.fillWidth: true
                Layout.leftMargin: Theme.wide
                Layout.rightMargin: Theme.wide
                Layout.bottomMargin: Theme.snug
            }
            Label {
                text: screen.search.leftOut
                secondary: true
                font.pixelSize: Theme.small
                visible: text !== ""
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Layout.leftMargin: Theme.wide
                Layout.rightMargin: Theme.wide
                Layout.bottomMargin: Theme.tight
            }
            EmptyState {
                symbol: "magnifyingglass"
                title: qsTr("No group fits the filter.")
                visible: screen.rows.shownCount === 0
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            // The groups of equal files, each a card made of several rows. Return shows a file in
            // the file manager, Space keeps it.
            EntryList {
                id: list

                label: qsTr("Duplicates")
                rows: screen.rows
                visible: screen.rows.shownCount > 0
                roomBelow: Theme.snug
                leftMargin: Theme.wide
                rightMargin: Theme.wide
                focus: true
                Keys.onSpacePressed: screen.rows.keep(currentIndex)
                Layout.fillWidth: true
                Layout.fillHeight: true

                entries: [
                    MenuDivider {},
                    MenuEntry {
                        text: qsTr("Keep This Copy")
                        symbol: "checkmark"
                        onTriggered: screen.rows.keep(list.currentIndex)
                    },
                    MenuEntry {
                        text: qsTr("Show Only This Folder")
                        symbol: "magnifyingglass"
                        onTriggered: choice.search.query = screen.rows.folder(list.currentIndex) + "/"
                    },
                    MenuEntry {
                        text: qsTr("Keep Everything in This Folder")
                        symbol: "folder"
                        onTriggered: screen.rows.keepFolder(list.currentIndex)
                    }
                ]
                delegate: DuplicateRow {
                    onKept: screen.rows.keep(index)
                    onClicked: {
                        list.forceActiveFocus(Qt.MouseFocusReason);
                        list.currentIndex = index;
                    }
                    onDoubleClicked: screen.rows.reveal(index)
                    // The button that opened the question is removed with its row, so the focus
                    // returns to the list.
                    onCloned: {
                        list.forceActiveFocus();
                        screen.rows.clone(index);
                    }
                    onTrashed: {
                        list.forceActiveFocus();
                        screen.rows.trash(index);
                    }
                }
            }
        }
    }

    // The screen before a search, and after one without results.
    component DuplicatesStart: StartPanel {
        id: panel

        readonly property bool searched: AppModel.duplicates.hasSearched

        symbol: searched ? "checkmark.circle" : "doc.on.doc"
        eyebrow: qsTr("Duplicates")
        title: searched ? qsTr("No duplicates found.") : qsTr("Find identical files.")
        line: searched && AppModel.duplicates.unreadableCount > 0 ? qsTr("Nothing in what could be read is an exact copy of something else (%1). %2 folders could not be.").arg(scope.compared).arg(Format.count(AppModel.duplicates.unreadableCount)) : !searched ? qsTr("Brimlo compares %1 by their full contents, so only exact copies are listed. Then “Replace with clones” shares the disk space between copies, keeps every path working, and loses nothing.").arg(scope.compared) : AppModel.duplicates.otherFolders.length > 0 ? qsTr("Nothing in these folders is an exact copy of something else (%1). Try another folder.").arg(scope.compared) : qsTr("Nothing in this folder is an exact copy of something else (%1). Try another folder.").arg(scope.compared)
        actions: [
            SolidButton {
                text: panel.searched ? qsTr("Search again") : qsTr("Find duplicates")
                symbol: "doc.on.doc"
                focus: true
                onClicked: AppModel.duplicates.find()
            },
            OutlineButton {
                text: qsTr("Search my home folder")
                onClicked: AppModel.duplicates.findInHome()
            }
        ]
        hints: StartHint {
            text: qsTr("Nothing is changed until you choose Replace with clones or Trash extras for a group. You can also drop a folder on this window.")
        }

        FolderRow {
            path: AppModel.duplicates.root
            onChosen: path => AppModel.duplicates.root = path
            Layout.fillWidth: true
        }
        DuplicateScope {
            id: scope

            Layout.fillWidth: true
            Layout.topMargin: Theme.tight
        }
    }
}
