import QtQuick
import Brimlo

SettingsSection {
    title: qsTr("Access")

    SettingsLine {
        symbol: AppModel.machine.hasFullDiskAccess ? "checkmark.shield" : "lock.shield"
        text: AppModel.machine.hasFullDiskAccess ? qsTr("Full Disk Access granted") : qsTr("Full Disk Access not granted")
        color: AppModel.machine.hasFullDiskAccess ? Theme.safeText : Theme.rebuildText
        visible: SystemWords.hasPrivacyPage

        OutlineButton {
            text: qsTr("Open System Settings")
            onClicked: AppModel.machine.openPrivacySettings()
        }
    }
    SettingsCaption {
        text: qsTr("What you may read, Brimlo may read.")
        visible: !SystemWords.hasPrivacyPage
    }
}
