import QtQuick
import Brimlo

SettingsSection {
    title: qsTr("Access")

    SettingsLine {
        symbol: AppModel.hasFullDiskAccess ? "checkmark.shield" : "lock.shield"
        text: AppModel.hasFullDiskAccess ? qsTr("Full Disk Access granted") : qsTr("Full Disk Access not granted")
        color: AppModel.hasFullDiskAccess ? Theme.safeText : Theme.rebuildText
        visible: SystemWords.hasPrivacyPage

        OutlineButton {
            text: qsTr("Open System Settings")
            onClicked: AppModel.openPrivacySettings()
        }
    }
    SettingsCaption {
        text: qsTr("What you may read, Brimlo may read.")
        visible: !SystemWords.hasPrivacyPage
    }
}
