pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// Which large files count: a chip for each kind, and the least age and size. A change searches
// again.
FocusScope {
    id: filters

    readonly property LargeFileSearch search: AppModel.largeFiles
    readonly property var ages: [0, 30, 182, 365, 730]
    readonly property var sizes: [52428800, 100e6, 500e6, 1e9, 5e9]

    implicitHeight: line.implicitHeight

    Flow {
        id: line

        spacing: Theme.tight
        width: parent.width

        Repeater {
            // Without the first kind, folders.
            model: FileKinds.count - 1

            KindChip {
                required property int index

                kind: index + 1
            }
        }
        Picker {
            model: [qsTr("Any age"), qsTr("Older than 1 month"), qsTr("Older than 6 months"), qsTr("Older than 1 year"), qsTr("Older than 2 years")]
            currentIndex: filters.ages.indexOf(filters.search.olderThan)
            onActivated: index => filters.search.olderThan = filters.ages[index]
        }
        Picker {
            model: [qsTr("50 MB or more"), qsTr("100 MB or more"), qsTr("500 MB or more"), qsTr("1 GB or more"), qsTr("5 GB or more")]
            currentIndex: filters.sizes.indexOf(filters.search.minSize)
            onActivated: index => filters.search.minSize = filters.sizes[index]
        }
    }

    // Lets one kind through, beside the others that are checked; without any, all kinds are.
    component KindChip: ButtonBase {
        id: chip

        property int kind: 0

        text: FileKinds.label(kind)
        checked: (AppModel.largeFiles.kinds & 1 << kind) !== 0
        onClicked: AppModel.largeFiles.kinds ^= 1 << kind
        Accessible.onToggleAction: press()
        Accessible.checkable: true
        Accessible.checked: checked

        background: Rectangle {
            radius: height / 2
            color: chip.checked ? Theme.selection : chip.hovered ? Theme.subtle : "transparent"
            border.width: 1
            border.color: Theme.border

            FocusRing {
                anchors.margins: -2
                radius: parent.radius + 2
                shown: chip.visualFocus
            }
        }
    }
}
