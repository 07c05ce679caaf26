import QtQuick
import Brimlo

SettingsSection {
    title: qsTr("Access")

    SettingsLine {
        symbol: AppModel.hasFullDiskAccess ? "checkmark.shield" : "lock.shield"
        text: AppModel.hasFullDiskAccess ? qsTr("Full Disk Access granted") : qsTr("Full Disk Access not granted")
        color: AppModel.hasFullDiskAccess ? Theme.safeText : Theme.rebuildText

        OutlineButton {
            text: qsTr("Open System Settings")
            enabled: SystemWords.hasPrivacyPage
            onClicked: AppModel.openPrivacySettings()
        }
    }
    SettingsCaption {
        text: qsTr("This system has no page for it: what you may read, Brimlo may read.")
        visible: !SystemWords.hasPrivacyPage
    }
}
