import QtQuick
import Brimlo

// The Space Analyzer before a scan.
StartPanel {
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
            text: qsTr("Scan %1").arg(SystemWords.bootVolume)
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
