import QtQuick
import QtQuick.Layouts
import Brimlo

// The groups of equal files below a folder.
Screen {
    id: screen

    focus: true
    title: qsTr("Duplicates")

    DuplicateRows {
        id: rows

        source: AppModel
    }
    FolderDrop {
        parent: screen
        invitation: qsTr("Drop the folder to search it")
        onFolderDropped: address => AppModel.findDuplicatesInDropped(address)
    }
    SearchScreens {
        isBusy: AppModel.isFindingDupes
        hasResults: !AppModel.isFindingDupes && rows.count > 0
        Layout.fillWidth: true
        Layout.fillHeight: true

        busy: SearchingState {
            width: parent.width
            title: qsTr("Comparing files…")
            path: AppModel.dupRoot
            line: qsTr("Large folders can take a minute or two.")
            Keys.onEscapePressed: AppModel.cancelDuplicates()

            OutlineButton {
                text: qsTr("Cancel")
                focus: true
                onClicked: AppModel.cancelDuplicates()
            }
        }
        start: DuplicatesStart {
            anchors.fill: parent
        }
        results: ColumnLayout {
            anchors.fill: parent
            spacing: 0

            ResultsBar {
                folder: AppModel.dupRoot
                text: rows.groupCount === 1 ? qsTr("1 group of identical files") : qsTr("%1 groups of identical files").arg(Format.count(rows.groupCount))
                line: qsTr("%1 reclaimable").arg(Format.bytes(rows.reclaimable))
                onFolderChosen: path => AppModel.dupRoot = path
                onSearchWanted: AppModel.findDuplicates()
                Layout.fillWidth: true
            }
            DuplicateList {
                rows: rows
                focus: true
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
        }
    }
}
