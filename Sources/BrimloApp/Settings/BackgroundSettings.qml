import QtQuick
import QtQuick.Layouts
import Brimlo

SettingsSection {
    title: qsTr("Run in the background")

    Toggle {
        text: qsTr("Also run auto-clean when Brimlo is closed")
        on: AppModel.settings.agentInstalled
        enabled: AppModel.settings.hasBundledCLI
        onSwitched: value => AppModel.settings.setAgent(value)
        Layout.fillWidth: true
    }
    SettingsCaption {
        text: qsTr("Not available when running from a development build.")
        visible: !AppModel.settings.hasBundledCLI
    }
    SettingsCaption {
        text: qsTr("Checks every 6 hours while you are logged in. It only acts if auto-clean above is on and free space is below your threshold. Without this, auto-clean runs only while Brimlo is open (once an hour).")
    }
    Notice {
        symbol: "exclamationmark.triangle"
        text: qsTr("Auto-clean is off, so the background job will do nothing yet.")
        color: Theme.rebuild
        visible: AppModel.settings.agentInstalled && !AppModel.settings.autoCleanEnabled
    }
    Notice {
        symbol: "arrow.triangle.2.circlepath"
        text: qsTr("The background job points at a different copy of Brimlo. Turn it off and on to update it.")
        color: Theme.rebuild
        visible: AppModel.settings.agentIsOfOtherCopy
    }
}
