import QtQuick
import QtQuick.Layouts
import Brimlo

// Offers the command line tool once, at the first start after a clean.
Sheet {
    title: qsTr("Use Brimlo from the terminal?")
    symbol: "terminal"
    preferredWidth: 480
    presented: AppModel.settings.offersCLI
    onDismissed: AppModel.settings.answerCLIOffer(false)
    defaultButton: install
    footer: [
        Item {
            Layout.fillWidth: true
        },
        OutlineButton {
            text: qsTr("Not Now")
            onClicked: AppModel.settings.answerCLIOffer(false)
        },
        SolidButton {
            id: install

            text: qsTr("Install")
            onClicked: AppModel.settings.answerCLIOffer(true)
        }
    ]

    Label {
        text: qsTr("This installs the command-line tool at /usr/local/bin/brimlo so you can run `brimlo` in any terminal. It needs your administrator password once. You can also do this later from Settings.")
        wrapMode: Text.Wrap
        lineHeight: 1.2
        Layout.fillWidth: true
    }
}
