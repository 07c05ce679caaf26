pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// The screen of the chosen section. Each is made when it is first shown, and keeps its place in
// its lists from then on.
FocusScope {
    Repeater {
        model: [
            {
                id: "overview",
                file: "OverviewView.qml"
            },
            {
                id: "clean",
                file: "SmartCleanView.qml"
            },
            {
                id: "analyzer",
                file: "AnalyzerView.qml"
            },
            {
                id: "largeFiles",
                file: "LargeFilesView.qml"
            },
            {
                id: "rules",
                file: "RulesView.qml"
            },
            {
                id: "duplicates",
                file: "DuplicatesView.qml"
            },
            {
                id: "history",
                file: "HistoryView.qml"
            },
            {
                id: "settings",
                file: "SettingsView.qml"
            }
        ]

        LazyLoader {
            required property var modelData
            readonly property bool chosen: AppModel.section === modelData.id

            anchors.fill: parent
            source: modelData.file
            needed: chosen
            visible: chosen
            focus: chosen
        }
    }
}
