import QtQuick
import QtQuick.Layouts
import Brimlo

// The biggest files below a folder.
Screen {
    id: screen

    readonly property bool hasResults: !AppModel.isFindingLarge && rows.count > 0

    focus: true
    title: qsTr("Large Files")

    LargeFileRows {
        id: rows

        source: AppModel
    }
    FolderDrop {
        parent: screen
        invitation: qsTr("Drop the folder to search it")
        onFolderDropped: address => AppModel.findLargeFilesInDropped(address)
    }
    SearchScreens {
        isBusy: AppModel.isFindingLarge
        hasResults: screen.hasResults
        Layout.fillWidth: true
        Layout.fillHeight: true

        busy: SearchingState {
            width: parent.width
            title: qsTr("Scanning for large files…")
            path: AppModel.largeRoot
            Keys.onEscapePressed: AppModel.cancelLargeFiles()

            OutlineButton {
                text: qsTr("Cancel")
                focus: true
                onClicked: AppModel.cancelLargeFiles()
            }
        }
        start: LargeFilesStart {
            anchors.fill: parent
        }
        results: ColumnLayout {
            anchors.fill: parent
            spacing: 0

            ResultsBar {
                folder: AppModel.largeRoot
                text: rows.count === 1 ? qsTr("1 large file") : qsTr("%1 large files").arg(Format.count(rows.count))
                line: qsTr("%1 in total").arg(Format.bytes(rows.totalBytes))
                onFolderChosen: path => AppModel.largeRoot = path
                onSearchWanted: AppModel.findLargeFiles()
                Layout.fillWidth: true
            }
            LargeFileList {
                rows: rows
                focus: true
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }
    }
}
