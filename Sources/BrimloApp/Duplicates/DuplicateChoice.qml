pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// Which groups are shown, and which copy of each stays: one chosen by a rule, and all in the kept
// folders.
Flow {
    id: choice

    readonly property DuplicateSearch search: AppModel.duplicates

    // A chip was pressed and is about to be removed.
    signal released

    spacing: Theme.tight

    SearchField {
        id: field

        placeholder: qsTr("Name, folder or *.jpg")
        width: Math.min(Theme.scaled(220), choice.width)
        onTextChanged: if (text !== choice.search.query)
            pause.restart()
    }
    Timer {
        id: pause

        interval: 150
        onTriggered: choice.search.query = field.text
    }
    Connections {
        target: choice.search

        function onFilterChanged() {
            pause.stop();
            field.text = choice.search.query;
        }
    }
    Picker {
        model: [...Array(FileKinds.count).keys()].map(kind => kind === 0 ? qsTr("All kinds") : FileKinds.label(kind))
        help: qsTr("Which kind of file is shown")
        currentIndex: choice.search.kind
        onActivated: index => choice.search.kind = index
    }
    Picker {
        model: [qsTr("Keep: first by name"), qsTr("Keep: newest"), qsTr("Keep: oldest"), qsTr("Keep: shortest path"), qsTr("Keep: tidiest folder")]
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
        text: choice.search.rows.shownCount < choice.search.rows.groupCount ? qsTr("Review extras shown…") : qsTr("Review extras…")
        symbol: "trash"
        enabled: choice.search.rows.reclaimable > 0
        onClicked: choice.search.reviewExtras()
    }
}
