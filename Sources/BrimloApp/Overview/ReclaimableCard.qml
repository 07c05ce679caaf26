import QtQuick
import QtQuick.Layouts
import Brimlo

// How much of the disk could be cleaned, according to the last suggestions. The first come soon after
// the start, without a press.
Card {
    id: card

    readonly property bool found: AppModel.smartClean.rows.foundCount > 0

    readonly property bool searched: !isNaN(AppModel.smartClean.suggestStarted.getTime())

    padding: Theme.roomy
    spacing: Theme.normal

    // No layout around the rows: nearly all of them change when the first suggestions come, and nested
    // layouts of Qt 6.4 then give up in the middle.
    Column {
        spacing: card.spacing
        Layout.fillWidth: true

        SectionHeading {
            text: qsTr("Reclaimable")
            width: parent.width
            line: card.found ? "" : AppModel.smartClean.isSuggesting ? qsTr("Looking for caches, build folders and leftovers…") : card.searched ? qsTr("Nothing was found that can go.") : qsTr("Find caches, build folders and leftovers for the apps and tools you use.")

            OutlineButton {
                text: qsTr("Rescan")
                symbol: "arrow.clockwise"
                visible: card.found
                enabled: !AppModel.smartClean.isSuggesting
                onClicked: AppModel.smartClean.loadSuggestions()
            }
        }
        RowLayout {
            width: parent.width
            spacing: Theme.snug
            visible: card.found

            StatCard {
                value: Format.bytes(AppModel.smartClean.rows.safeBytes)
                label: qsTr("safe to clear")
                color: Theme.safe
            }
            StatCard {
                value: Format.bytes(AppModel.smartClean.rows.rebuildBytes)
                label: qsTr("rebuilds on demand")
                color: Theme.rebuild
            }
            StatCard {
                value: Format.count(AppModel.smartClean.rows.foundCount)
                label: qsTr("suggestions")
                color: Theme.info
            }
        }
        Row {
            spacing: Theme.tight

            SolidButton {
                text: AppModel.smartClean.isSuggesting ? qsTr("Scanning…") : qsTr("Find cleanable space")
                symbol: "sparkles"
                visible: !card.found
                onClicked: AppModel.section = Sections.Clean
            }
            SolidButton {
                text: qsTr("Review & clean")
                symbol: "sparkles"
                visible: card.found
                onClicked: AppModel.section = Sections.Clean
            }
            OutlineButton {
                text: qsTr("Analyze disk usage")
                symbol: "chart.pie"
                onClicked: {
                    AppModel.section = Sections.Analyzer;
                    if (!AppModel.analyzer.hasTree)
                        AppModel.analyzer.scan();
                }
            }
        }
    }
}
