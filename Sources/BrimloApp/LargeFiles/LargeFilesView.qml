pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The biggest files below a folder.
Screen {
    id: screen

    readonly property LargeFileSearch search: AppModel.largeFiles
    readonly property LargeFileRows rows: search.rows

    focus: true
    title: qsTr("Large Files")
    footerHeight: selectionBar.height
    toolbar: [
        SortButtons {
            order: screen.rows.order
            keys: ["Size", "Name", "Modified"]
            visible: screen.rows.count > 0
        }
    ]

    FolderDrop {
        parent: screen
        invitation: qsTr("Drop the folder to search it")
        onFolderDropped: address => screen.search.findInDropped(address)
    }
    FileFilters {
        id: filters

        choice: screen.search.choice
        leastSize: 52428800
        leastSizeText: qsTr("50 MB or more")
        visible: screen.search.isSearching || screen.search.hasSearched || choice.isActive
        Layout.fillWidth: true
        Layout.topMargin: Theme.snug
        Layout.leftMargin: Theme.wide
        Layout.rightMargin: Theme.wide
    }
    DisposeSheet {
        review: screen.search.review
    }
    SearchScreens {
        focusIsBeside: filters.activeFocus
        isBusy: screen.search.isSearching
        hasResults: !screen.search.isSearching && screen.rows.count > 0
        Layout.fillWidth: true
        Layout.fillHeight: true

        busy: SearchingState {
            width: parent.width
            title: qsTr("Scanning for large files…")
            path: screen.search.root
            Keys.onEscapePressed: screen.search.cancel()

            OutlineButton {
                text: qsTr("Cancel")
                focus: true
                onClicked: screen.search.cancel()
            }
        }
        start: LargeFilesStart {
            anchors.fill: parent
        }
        results: ColumnLayout {
            anchors.fill: parent
            spacing: 0

            ResultsBar {
                folder: screen.search.root
                text: screen.rows.count === 1 ? qsTr("1 large file") : qsTr("%1 large files").arg(Format.count(screen.rows.count))
                line: qsTr("%1 in total").arg(Format.bytes(screen.rows.totalBytes))
                onFolderChosen: path => screen.search.root = path
                onSearchWanted: screen.search.find()
                Layout.fillWidth: true
            }
            // The largest files. Return shows one in the file manager, Delete moves it to the Trash.
            // Space or a click with Control selects a row, Control-A all, with Shift a range, Escape
            // none; Delete then opens the review of the selected rows.
            EntryList {
                id: list

                property int anchorRow: 0
                readonly property int dateWidth: Math.ceil(widestDate.advanceWidth)

                // The button that opened the question is removed with its row, so the focus returns
                // to the list.
                function trash(row) {
                    forceActiveFocus();
                    screen.rows.trash(row);
                }
                function pick(row, modifiers) {
                    if (modifiers & Qt.ShiftModifier) {
                        screen.rows.selectRange(anchorRow, row);
                        return;
                    }
                    anchorRow = Math.max(0, row);
                    if (modifiers & (Qt.ControlModifier | Qt.MetaModifier))
                        screen.rows.toggleSelected(row);
                    else
                        screen.rows.clearSelection();
                }

                label: qsTr("Large Files")
                rows: screen.rows
                roomBelow: Theme.snug
                leftMargin: Theme.snug
                rightMargin: Theme.snug
                Keys.onDeletePressed: screen.rows.selectedCount > 0 ? screen.rows.reviewSelected() : trash(currentIndex)
                Keys.onSpacePressed: pick(currentIndex, Qt.ControlModifier)
                Keys.onEscapePressed: event => {
                    event.accepted = screen.rows.selectedCount > 0;
                    screen.rows.clearSelection();
                }
                focus: true
                Layout.fillWidth: true
                Layout.fillHeight: true

                Shortcut {
                    sequence: "Ctrl+A"
                    enabled: list.activeFocus
                    onActivated: screen.rows.selectRange(0, list.count - 1)
                }

                TextMetrics {
                    id: widestDate

                    font.family: Theme.family
                    font.pixelSize: Theme.body
                    text: Format.widestDate(Theme.family, Theme.body)
                }

                delegate: LargeFileRow {
                    dateWidth: list.dateWidth
                    onPicked: modifiers => {
                        list.forceActiveFocus(Qt.MouseFocusReason);
                        list.currentIndex = index;
                        list.pick(index, modifiers);
                    }
                    onDoubleClicked: screen.rows.reveal(index)
                    onRevealed: screen.rows.reveal(index)
                    onTrashed: list.trash(index)
                }
            }
            SelectionBar {
                id: selectionBar

                rows: screen.rows
                Layout.fillWidth: true
            }
        }
    }

    // The screen before a search, and after one without results.
    component LargeFilesStart: StartPanel {
        id: panel

        readonly property bool searched: AppModel.largeFiles.hasSearched
        readonly property string nothing: AppModel.largeFiles.choice.isActive ? qsTr("No file fits the filters") : qsTr("Nothing 50 MB or larger")

        symbol: searched ? "checkmark.circle" : "doc.text.magnifyingglass"
        eyebrow: qsTr("Large Files")
        title: searched ? qsTr("No large files found.") : qsTr("Find your biggest files.")
        line: searched && AppModel.largeFiles.unreadableCount > 0 ? qsTr("%1 in what could be read. %2 folders could not be.").arg(nothing).arg(Format.count(AppModel.largeFiles.unreadableCount)) : searched ? qsTr("%1 in this folder. Try another folder.").arg(nothing) : qsTr("Lists the biggest individual files (50 MB or more) so you can spot space hogs. Nothing is removed until you choose Move to Trash on a file, and it goes to the Trash first with full undo.")
        actions: [
            SolidButton {
                text: panel.searched ? qsTr("Search again") : qsTr("Find large files")
                focus: true
                onClicked: AppModel.largeFiles.find()
            },
            OutlineButton {
                text: qsTr("Search my home folder")
                onClicked: AppModel.largeFiles.findInHome()
            }
        ]
        hints: StartHint {
            text: qsTr("You can also drop a folder on this window.")
        }

        FolderRow {
            path: AppModel.largeFiles.root
            onChosen: path => AppModel.largeFiles.root = path
            Layout.fillWidth: true
        }
    }
}
