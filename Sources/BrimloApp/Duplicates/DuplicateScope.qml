pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// What is compared: the other folders besides the first, and the least length of a file.
Flow {
    id: scope

    readonly property DuplicateSearch search: AppModel.duplicates
    readonly property var sizes: [1, 65536, 1048576, 10e6, 100e6]
    readonly property var words: [qsTr("files of any size"), qsTr("files of 64 KB or more"), qsTr("files of 1 MB or more"), qsTr("files of 10 MB or more"), qsTr("files of 100 MB or more")]
    readonly property int sizeIndex: Math.max(0, sizes.indexOf(search.minSize))
    readonly property string compared: words[sizeIndex]

    // Something else is to be compared now. A chip that was pressed is about to be removed.
    signal changed

    spacing: Theme.tight

    Picker {
        model: scope.words.map(words => qsTr("Compare: %1").arg(words))
        help: qsTr("Which files are compared")
        currentIndex: scope.sizeIndex
        onActivated: index => {
            scope.search.minSize = scope.sizes[index];
            scope.changed();
        }
    }
    Repeater {
        model: scope.search.otherFolders

        FolderChip {
            required property string modelData

            folder: modelData
            text: qsTr("Also in %1").arg(name)
            help: qsTr("Search %1 no more").arg(Format.oneLine(folder))
            width: Math.min(implicitWidth, scope.width)
            onClicked: {
                scope.search.removeFolder(folder);
                scope.changed();
            }
        }
    }
    OutlineButton {
        text: qsTr("Add folder…")
        symbol: "plus"
        onClicked: chooser.open()
    }
    FolderChooser {
        id: chooser

        path: scope.search.root
        onChosen: path => {
            scope.search.addFolder(path);
            scope.changed();
        }
    }
}
