pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// The screen of the current section. Each is created when first needed and then keeps its scroll
// positions.
FocusScope {
    id: screens

    // What the buttons at the bottom of the current screen take.
    property real footerHeight: 0

    Repeater {
        model: [
            {
                id: Sections.Overview,
                file: "OverviewView.qml"
            },
            {
                id: Sections.Clean,
                file: "SmartCleanView.qml"
            },
            {
                id: Sections.Analyzer,
                file: "AnalyzerView.qml"
            },
            {
                id: Sections.LargeFiles,
                file: "LargeFilesView.qml"
            },
            {
                id: Sections.Rules,
                file: "RulesView.qml"
            },
            {
                id: Sections.Duplicates,
                file: "DuplicatesView.qml"
            },
            {
                id: Sections.History,
                file: "HistoryView.qml"
            },
            {
                id: Sections.Settings,
                file: "SettingsView.qml"
            }
        ]

        LazyLoader {
            id: loader

            required property var modelData
            readonly property bool chosen: AppModel.section === modelData.id

            anchors.fill: parent
            source: modelData.file
            needed: chosen
            visible: chosen
            focus: chosen

            Binding {
                target: screens
                property: "footerHeight"
                value: loader.item?.footerHeight ?? 0 // qmllint disable property
                when: loader.chosen
                restoreMode: Binding.RestoreNone
            }
        }
    }
}
