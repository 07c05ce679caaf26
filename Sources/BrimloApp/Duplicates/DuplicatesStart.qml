import QtQuick
import QtQuick.Layouts
import Brimlo

// Duplicates before a search, and after one that found nothing.
StartPanel {
    id: panel

    readonly property bool searched: AppModel.duplicates.hasSearched

    symbol: searched ? "checkmark.circle" : "doc.on.doc"
    eyebrow: qsTr("Duplicates")
    title: searched ? qsTr("No duplicates found.") : qsTr("Find identical files.")
    line: searched && AppModel.duplicates.unreadableCount > 0 ? qsTr("Nothing in what could be read is an exact copy of something else (files of 1 MB or more). %1 folders could not be.").arg(Format.count(AppModel.duplicates.unreadableCount)) : searched ? qsTr("Nothing in this folder is an exact copy of something else (files of 1 MB or more). Try another folder.") : qsTr("Brimlo compares files of 1 MB or more by their full contents, so only exact copies are listed. Then “Replace with clones” shares the disk space between copies, keeps every path working, and loses nothing.")
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
}
