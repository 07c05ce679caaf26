import QtQuick
import Brimlo

SettingsSection {
    title: qsTr("Command-line tool")

    SettingsLine {
        symbol: AppModel.cliInstalled ? "checkmark.circle" : "terminal"
        text: AppModel.cliInstalled ? qsTr("brimlo is installed at %1").arg(AppModel.cliPlace) : qsTr("Install brimlo so you can use it in any terminal")
        color: AppModel.cliInstalled ? Theme.safeText : Theme.secondaryText

        OutlineButton {
            text: AppModel.cliInstalled ? qsTr("Reinstall") : qsTr("Install")
            enabled: AppModel.hasBundledCLI
            onClicked: AppModel.installCLI()
        }
    }
    SettingsCaption {
        text: qsTr("Not available when running from a development build.")
        visible: !AppModel.hasBundledCLI
    }
    SettingsCaption {
        text: qsTr("Adds a link at /usr/local/bin/brimlo pointing to the tool inside the app. Needs your administrator password once.")
        visible: !AppModel.cliInstalled
    }
}
