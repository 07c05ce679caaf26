import QtQuick
import QtQuick.Layouts
import Brimlo

// Large Files before a search, and after one that found nothing.
StartPanel {
    id: panel

    readonly property bool searched: AppModel.largeFiles.hasSearched

    symbol: searched ? "checkmark.circle" : "doc.text.magnifyingglass"
    eyebrow: qsTr("Large Files")
    title: searched ? qsTr("No large files found.") : qsTr("Find your biggest files.")
    line: searched && AppModel.largeFiles.unreadableCount > 0 ? qsTr("Nothing 50 MB or larger in what could be read. %1 folders could not be.").arg(Format.count(AppModel.largeFiles.unreadableCount)) : searched ? qsTr("Nothing 50 MB or larger in this folder. Try another folder.") : qsTr("Lists the biggest individual files (50 MB or more) so you can spot space hogs. Nothing is removed until you choose Move to Trash on a file, and it goes to the Trash first with full undo.")
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
