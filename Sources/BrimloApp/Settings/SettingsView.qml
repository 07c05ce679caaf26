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
        BackgroundSettings {}
        CommandLineSettings {}
        AccessSettings {}
    }
}
