pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// Which copy of each group stays: one chosen by a rule, and all in the kept folders.
Flow {
    id: choice

    readonly property DuplicateSearch search: AppModel.duplicates

    // A chip was pressed and is about to be removed.
    signal released

    spacing: Theme.tight

    Picker {
        model: [qsTr("Keep: first by name"), qsTr("Keep: newest"), qsTr("Keep: oldest"), qsTr("Keep: shortest path")]
        help: qsTr("Which copy of each group stays")
        currentIndex: choice.search.rule
        onActivated: index => choice.search.rule = index
    }
    Repeater {
        model: choice.search.keptFolders

        FolderChip {
            required property string modelData

            folder: modelData
            text: qsTr("Keep all in %1").arg(name)
            help: qsTr("Stop keeping every copy in %1").arg(Format.oneLine(folder))
            width: Math.min(implicitWidth, choice.width)
            onClicked: {
                choice.released();
                choice.search.release(folder);
            }
        }
    }
    OutlineButton {
        readonly property int sets: choice.search.equalFolders.length

        text: sets === 1 ? qsTr("1 set of equal folders…") : qsTr("%1 sets of equal folders…").arg(Format.count(sets))
        symbol: "folder"
        visible: sets > 0
        onClicked: folders.presented = true

        EqualFoldersSheet {
            id: folders
        }
    }
    OutlineButton {
        text: qsTr("Review extras…")
        symbol: "trash"
        enabled: choice.search.rows.reclaimable > 0
        onClicked: choice.search.reviewExtras()
    }
}
