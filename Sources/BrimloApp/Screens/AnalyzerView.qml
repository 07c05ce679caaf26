pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// What fills a folder: scanned, shown level by level, and cleared from after a review.
Screen {
    id: screen

    // The visible one of the three has the keyboard focus.
    function settle() {
        (AppModel.isScanning ? scanning : AppModel.hasTree ? result : start).focus = true;
    }

    focus: true
    title: qsTr("Space Analyzer")
    Component.onCompleted: settle()
    toolbar: [
        FolderMenu {
            Layout.maximumWidth: 200
        },
        ToolbarButton {
            text: qsTr("Scan")
            symbol: "arrow.clockwise"
            help: qsTr("Scan the selected folder again")
            enabled: !AppModel.isScanning
            onClicked: AppModel.scan()
        },
        SortMenu {},
        ToolbarButton {
            symbol: AppModel.ascending ? "arrow.up" : "arrow.down"
            help: qsTr("Reverse order")
            onClicked: AppModel.ascending = !AppModel.ascending
        },
        SegmentedPicker {
            label: qsTr("View")
            currentIndex: AppModel.analyzerMode === 0 ? 0 : 1
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
            onActivated: index => AppModel.analyzerMode = index
        }
    ]

    PlanReview {
        id: review

        source: AppModel
    }
    DisposeSheet {
        review: review
    }
    Connections {
        target: AppModel

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
        onFolderDropped: address => AppModel.scanDropped(address)
    }
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        FocusScope {
            id: scanning

            anchors.fill: parent
            visible: AppModel.isScanning
            Keys.onEscapePressed: AppModel.cancelScan()

            ScanningState {
                anchors.centerIn: parent
                width: Math.min(560, parent.width - 2 * Theme.wide)
            }
        }
        AnalyzerResult {
            id: result

            review: review
            anchors.fill: parent
            visible: !AppModel.isScanning && AppModel.hasTree
        }
        FocusScope {
            id: start

            anchors.fill: parent
            visible: !AppModel.isScanning && !AppModel.hasTree

            AnalyzerStart {
                anchors.fill: parent
            }
        }
    }
}
