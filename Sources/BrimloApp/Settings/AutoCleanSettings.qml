import QtQuick
import QtQuick.Layouts
import Brimlo

SettingsSection {
    title: qsTr("Auto-clean")

    Toggle {
        text: qsTr("Automatically clean regenerable items when disk space is low")
        on: AppModel.settings.autoCleanEnabled
        onSwitched: value => AppModel.settings.autoCleanEnabled = value
        Layout.fillWidth: true
    }
    Toggle {
        text: qsTr("Let auto-clean act on custom rules, too")
        on: AppModel.settings.autoCleanIncludesCustomRules
        onSwitched: value => AppModel.settings.autoCleanIncludesCustomRules = value
        Layout.fillWidth: true
    }
    Divider {
        Layout.fillWidth: true
    }
    Stepper {
        text: qsTr("Free-space threshold: %1 GB").arg(value)
        value: AppModel.settings.freeSpaceThresholdGB
        from: 5
        to: 500
        step: 5
        onStepped: value => AppModel.settings.freeSpaceThresholdGB = value
        Layout.fillWidth: true
    }
    Stepper {
        text: qsTr("Treat projects as idle after %1 days").arg(value)
        value: AppModel.settings.staleDays
        from: 14
        to: 730
        step: 14
        onStepped: value => AppModel.settings.staleDays = value
        Layout.fillWidth: true
    }
    Stepper {
        text: qsTr("Empty Brimlo's Trash items after %1 days").arg(value)
        value: AppModel.settings.trashRetentionDays
        from: 0
        to: 60
        onStepped: value => AppModel.settings.trashRetentionDays = value
        Layout.fillWidth: true
    }
    Divider {
        Layout.fillWidth: true
    }
    SettingsCaption {
        text: qsTr("Auto-clean only touches items rated Safe, or Rebuilds items in projects idle past the limit. Review items are never auto-selected, and apps that are running are skipped.")
    }
    Flow {
        spacing: Theme.tight
        enabled: AppModel.busy === "" && !AppModel.cleanup.isCleaning
        Layout.fillWidth: true

        OutlineButton {
            text: qsTr("Preview auto-clean (dry run)")
            symbol: "eye"
            onClicked: AppModel.settings.runAutoClean(true, true)
        }
        OutlineButton {
            text: qsTr("Run auto-clean now")
            symbol: "sparkles"
            onClicked: AppModel.settings.runAutoClean(true, false)
        }
    }
    Repeater {
        model: AppModel.settings.planned

        Label {
            required property string modelData

            text: modelData
            secondary: true
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
