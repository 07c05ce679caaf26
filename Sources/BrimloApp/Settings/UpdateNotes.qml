import QtQuick
import QtQuick.Layouts
import Brimlo

// What is new in the version that was found, and where to get it.
ColumnLayout {
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
