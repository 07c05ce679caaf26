import QtQuick
import Brimlo

SettingsSection {
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
