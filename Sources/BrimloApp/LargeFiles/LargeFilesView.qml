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
            LargeFileList {
                rows: screen.rows
                focus: true
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }
    }
}
