pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// Shows what fills a folder, level by level, and moves what the user selects to the Trash after a
// review.
Screen {
    id: screen

    // The visible one of the three has the keyboard focus.
    function settle() {
        (AppModel.analyzer.isScanning ? scanning : AppModel.analyzer.hasTree ? result : start).focus = true;
    }

    focus: true
    title: qsTr("Space Analyzer")
    footerHeight: result.visible ? result.footerHeight : 0
    Component.onCompleted: settle()
    toolbar: [
        FolderMenu {
            Layout.maximumWidth: 200
        },
        ToolbarButton {
            text: qsTr("Scan")
            symbol: "arrow.clockwise"
            help: qsTr("Scan the selected folder again")
            enabled: !AppModel.analyzer.isScanning
            onClicked: AppModel.analyzer.scan()
        },
        SortButtons {
            order: AppModel.analyzer.rows.order
            keys: ["Size", "Name", "Modified", "Items"]
        },
        SegmentedPicker {
            label: qsTr("View")
            currentIndex: AppModel.analyzer.analyzerMode === 0 ? 0 : 1
            model: [
                {
                    symbol: "list.bullet",
                    name: qsTr("List"),
                    help: qsTr("List or treemap")
                },
                {
                    symbol: "square.grid.3x3.fill",
                    name: qsTr("Treemap"),
                    help: qsTr("List or treemap")
                }
            ]
            onActivated: index => AppModel.analyzer.analyzerMode = index
        }
    ]

    DisposeSheet {
        review: AppModel.analyzer.review
    }
    Connections {
        target: AppModel.analyzer

        function onIsScanningChanged() {
            screen.settle();
        }
        function onCurrentChanged() {
            screen.settle();
        }
    }
    FolderDrop {
        parent: screen
        invitation: qsTr("Drop the folder to scan it")
        onFolderDropped: address => AppModel.analyzer.scanDropped(address)
    }
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        FocusScope {
            id: scanning

            anchors.fill: parent
            visible: AppModel.analyzer.isScanning
            Keys.onEscapePressed: AppModel.analyzer.cancelScan()

            ScanningState {
                anchors.centerIn: parent
                width: Math.min(560, parent.width - 2 * Theme.wide)
            }
        }
        AnalyzerResult {
            id: result

            anchors.fill: parent
            visible: !AppModel.analyzer.isScanning && AppModel.analyzer.hasTree
        }
        FocusScope {
            id: start

            anchors.fill: parent
            visible: !AppModel.analyzer.isScanning && !AppModel.analyzer.hasTree

            AnalyzerStart {
                anchors.fill: parent
            }
        }
    }

    // The screen before the first scan.
    component AnalyzerStart: StartPanel {
        symbol: "chart.pie"
        eyebrow: qsTr("Space Analyzer")
        title: qsTr("See exactly what is using your disk.")
        line: qsTr("Scan a folder to get a size-sorted breakdown you can drill into, sort, and clear from. Nothing is removed until you review it.")
        actions: [
            SolidButton {
                text: qsTr("Scan home folder")
                focus: true
                onClicked: AppModel.analyzer.scanHome()
            },
            OutlineButton {
                text: qsTr("Scan %1").arg(Desktop.bootVolume)
                onClicked: AppModel.analyzer.scanWholeDisk()
            }
        ]
        hints: [
            StartHint {
                symbol: "square.and.arrow.down"
                text: qsTr("Or drop a folder anywhere on this window.")
            },
            StartHint {
                symbol: "lock"
                text: qsTr("Grant Full Disk Access for a complete picture of Library and system caches.")
                visible: !AppModel.machine.hasFullDiskAccess
            }
        ]
    }
}
