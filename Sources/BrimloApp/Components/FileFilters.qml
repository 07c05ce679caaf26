pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// Which files count: a chip for each kind, and the least age and size.
FocusScope {
    id: filters

    required property FileChoice choice
    property double leastSize: 0
    property string leastSizeText: qsTr("Any size")
    // Whether the chips tell the colours of the kinds, too.
    property bool isLegend: false
    readonly property var ages: [0, 30, 182, 365, 730]
    readonly property var sizes: [leastSize, 100e6, 500e6, 1e9, 5e9]

    implicitHeight: line.implicitHeight

    Flow {
        id: line

        spacing: Theme.tight
        width: parent.width

        Label {
            text: FileKinds.label(0)
            visible: filters.isLegend
            height: Theme.controlHeight
            leftPadding: swatch.width + 2 * Theme.tight
            rightPadding: Theme.tight
            verticalAlignment: Text.AlignVCenter

            Swatch {
                id: swatch

                kind: 0
            }
        }
        Repeater {
            // Folders are no kind of file.
            model: FileKinds.count - 1

            KindChip {
                required property int index

                kind: index + 1
            }
        }
        Picker {
            model: [qsTr("Any age"), qsTr("Older than 1 month"), qsTr("Older than 6 months"), qsTr("Older than 1 year"), qsTr("Older than 2 years")]
            help: qsTr("How long files have not been changed")
            currentIndex: filters.ages.indexOf(filters.choice.olderThan)
            onActivated: index => filters.choice.olderThan = filters.ages[index]
        }
        Picker {
            model: [filters.leastSizeText, qsTr("100 MB or more"), qsTr("500 MB or more"), qsTr("1 GB or more"), qsTr("5 GB or more")]
            help: qsTr("How much of the disk files take")
            currentIndex: filters.sizes.indexOf(filters.choice.minSize)
            onActivated: index => filters.choice.minSize = filters.sizes[index]
        }
    }

    // The colour of a kind in the treemap.
    component Swatch: Rectangle {
        property int kind: 0

        x: Theme.tight
        anchors.verticalCenter: parent?.verticalCenter
        width: Theme.scaled(10)
        height: width
        radius: 3
        color: FileKinds.color(kind)
    }
    // Lets one kind through, beside the others that are checked; without any, all kinds are.
    component KindChip: ButtonBase {
        id: chip

        property int kind: 0

        text: FileKinds.label(kind)
        checked: (filters.choice.kinds & 1 << kind) !== 0
        onClicked: filters.choice.kinds ^= 1 << kind
        leftPadding: filters.isLegend ? dot.width + 2 * Theme.tight : Theme.snug
        Accessible.onToggleAction: press()
        Accessible.checkable: true
        Accessible.checked: checked

        background: Rectangle {
            radius: height / 2
            color: chip.checked ? Theme.selection : chip.hovered ? Theme.subtle : "transparent"
            border.width: 1
            border.color: Theme.border

            Swatch {
                id: dot

                kind: chip.kind
                visible: filters.isLegend
            }
            FocusRing {
                anchors.margins: -2
                radius: parent.radius + 2
                shown: chip.visualFocus
            }
        }
    }
}
