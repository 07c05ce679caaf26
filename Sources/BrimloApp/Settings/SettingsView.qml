import QtQuick
import QtQuick.Layouts
import Brimlo

Screen {
    title: qsTr("Settings")

    ScrollPane {
        maximumWidth: 760
        spacing: Theme.wide
        Layout.fillWidth: true
        Layout.fillHeight: true

        UpdatesSettings {}
        AutoCleanSettings {}
        LeftAloneSettings {}
        ScanSettings {}
        BackgroundSettings {}
        CommandLineSettings {}
        AccessSettings {}
    }

    component AccessSettings: SettingsSection {
        title: qsTr("Access")

        SettingsLine {
            symbol: AppModel.machine.hasFullDiskAccess ? "checkmark.shield" : "lock.shield"
            text: AppModel.machine.hasFullDiskAccess ? qsTr("Full Disk Access granted") : qsTr("Full Disk Access not granted")
            color: AppModel.machine.hasFullDiskAccess ? Theme.safeText : Theme.rebuildText
            visible: Desktop.hasPrivacyPage

            OutlineButton {
                text: qsTr("Open System Settings")
                onClicked: AppModel.machine.openPrivacySettings()
            }
        }
        SettingsCaption {
            text: qsTr("What you may read, Brimlo may read.")
            visible: !Desktop.hasPrivacyPage
        }
    }

    component BackgroundSettings: SettingsSection {
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

    component ScanSettings: SettingsSection {
        title: qsTr("Scans")

        Toggle {
            text: qsTr("Remember how large folders were, to tell what grew")
            on: AppModel.settings.rememberScans
            onSwitched: value => AppModel.settings.rememberScans = value
            Layout.fillWidth: true
        }
        SettingsCaption {
            text: qsTr("Keeps paths and sizes of folders of 1 MB or more from up to 12 scans of each folder, readable by you alone. The Space Analyzer shows what changed since a day ago or before.")
        }
        OutlineButton {
            text: qsTr("Forget earlier scans")
            symbol: "trash"
            onClicked: AppModel.settings.forgetScans()
        }
    }

    component CommandLineSettings: SettingsSection {
        title: qsTr("Command-line tool")

        SettingsLine {
            symbol: AppModel.settings.cliInstalled ? "checkmark.circle" : "terminal"
            text: AppModel.settings.cliInstalled ? qsTr("brimlo is installed at %1").arg(AppModel.settings.cliPlace) : qsTr("Install brimlo so you can use it in any terminal")
            color: AppModel.settings.cliInstalled ? Theme.safeText : Theme.secondaryText

            OutlineButton {
                text: AppModel.settings.cliInstalled ? qsTr("Reinstall") : qsTr("Install")
                enabled: AppModel.settings.hasBundledCLI
                onClicked: AppModel.settings.installCLI()
            }
        }
        SettingsCaption {
            text: qsTr("Not available when running from a development build.")
            visible: !AppModel.settings.hasBundledCLI
        }
        SettingsCaption {
            text: qsTr("Adds a link at /usr/local/bin/brimlo pointing to the tool inside the app. Needs your administrator password once.")
            visible: !AppModel.settings.cliInstalled
        }
    }
}
