import QtQuick
import QtQuick.Layouts
import Brimlo

SettingsSection {
    title: qsTr("Updates")

    Toggle {
        text: qsTr("Automatically check for updates")
        on: Updater.automaticallyChecks
        enabled: Updater.hasFeed
        onSwitched: value => Updater.automaticallyChecks = value
        Layout.fillWidth: true
    }
    SettingsCaption {
        text: qsTr("Checking contacts the update server to compare versions. It sends nothing about you or your files.")
    }
    Divider {
        Layout.fillWidth: true
    }
    SettingsLine {
        text: Updater.status

        Spinner {
            size: 16
            visible: Updater.isChecking
            running: visible
        }
        Label {
            text: qsTr("Version %1").arg(Updater.currentVersion)
            secondary: true
        }
        OutlineButton {
            text: qsTr("Check for updates now")
            enabled: Updater.canCheck
            onClicked: Updater.checkForUpdates()
        }
    }
    UpdateNotes {
        visible: Updater.updateVersion !== ""
        Layout.fillWidth: true
    }

    // The release notes of the newer version, and a link to it.
    component UpdateNotes: ColumnLayout {
        spacing: Theme.snug

        Notice {
            symbol: "square.and.arrow.down"
            text: qsTr("Version %1 is available.").arg(Updater.updateVersion)
            buttonText: Updater.updateLink !== "" ? qsTr("Get it") : ""
            onClicked: Qt.openUrlExternally(Updater.updateLink)
        }
        SettingsCaption {
            text: Updater.updateNotes
            visible: text !== ""
            maximumLineCount: 40
            elide: Text.ElideRight
        }
    }
}
