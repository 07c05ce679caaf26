import QtQuick
import QtQuick.Layouts
import Brimlo

// What of the disk could go, as far as it was looked for.
Card {
    id: card

    readonly property bool found: AppModel.found.count > 0

    padding: Theme.roomy
    spacing: Theme.normal

    SectionHeading {
        text: qsTr("Reclaimable")
        line: card.found ? "" : qsTr("Find caches, build folders and leftovers for the apps and tools you use.")
        Layout.fillWidth: true

        OutlineButton {
            text: qsTr("Rescan")
            symbol: "arrow.clockwise"
            visible: card.found
            enabled: !AppModel.isSuggesting
            onClicked: AppModel.loadSuggestions()
        }
    }
    RowLayout {
        spacing: Theme.snug
        visible: card.found
        Layout.fillWidth: true

        StatCard {
            value: Format.bytes(AppModel.found.safeBytes)
            label: qsTr("safe to clear")
            color: Theme.safe
            Layout.minimumWidth: 100
        }
        StatCard {
            value: Format.bytes(AppModel.found.rebuildBytes)
            label: qsTr("rebuilds on demand")
            color: Theme.rebuild
            Layout.minimumWidth: 100
        }
        StatCard {
            value: Format.count(AppModel.found.count)
            label: qsTr("suggestions")
            color: Theme.info
            Layout.minimumWidth: 100
        }
    }
    RowLayout {
        spacing: Theme.tight
        Layout.fillWidth: true

        SolidButton {
            text: AppModel.isSuggesting ? qsTr("Scanning…") : qsTr("Find cleanable space")
            symbol: "sparkles"
            visible: !card.found
            onClicked: AppModel.section = "clean"
        }
        SolidButton {
            text: qsTr("Review & clean")
            symbol: "sparkles"
            visible: card.found
            onClicked: AppModel.section = "clean"
        }
        OutlineButton {
            text: qsTr("Analyze disk usage")
            symbol: "chart.pie"
            onClicked: {
                AppModel.section = "analyzer";
                if (!AppModel.hasTree)
                    AppModel.scan();
            }
        }
    }
}
