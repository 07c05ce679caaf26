import QtQuick
import QtQuick.Layouts
import Brimlo

Sheet {
    id: about

    title: qsTr("Brimlo")
    subtitle: qsTr("Version %1").arg(Updater.currentVersion)
    symbol: "sparkles"
    preferredWidth: 420
    defaultButton: close
    footer: [
        Item {
            Layout.fillWidth: true
        },
        SolidButton {
            id: close

            text: qsTr("Close")
            onClicked: about.dismissed()
        }
    ]

    Label {
        text: qsTr("A cautious disk-space manager. It shows what fills the disk, what of it can safely go, and puts back what you miss.")
        wrapMode: Text.Wrap
        lineHeight: 1.2
        Layout.fillWidth: true
    }
    Label {
        text: qsTr("Set in Inter, by The Inter Project Authors (SIL Open Font License). Symbols by the Lucide contributors (ISC License).")
        secondary: true
        wrapMode: Text.Wrap
        lineHeight: 1.2
        font.pixelSize: Theme.small
        Layout.fillWidth: true
    }
}
