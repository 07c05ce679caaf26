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
    SearchScreens {
        isBusy: screen.search.isSearching
        hasResults: !screen.search.isSearching && screen.rows.count > 0
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
                text: screen.rows.groupCount === 1 ? qsTr("1 group of identical files") : qsTr("%1 groups of identical files").arg(Format.count(screen.rows.groupCount))
                line: qsTr("%1 reclaimable").arg(Format.bytes(screen.rows.reclaimable))
                onFolderChosen: path => screen.search.root = path
                onSearchWanted: screen.search.find()
                Layout.fillWidth: true
            }
            DuplicateList {
                rows: screen.rows
                focus: true
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }
    }
}
