import QtQuick
import QtQuick.Layouts
import Brimlo

// The folder to search, and a button to choose another.
Rectangle {
    id: row

    property string path

    signal chosen(string path)

    implicitWidth: 400
    implicitHeight: Theme.controlHeight + 2 * Theme.tight
    radius: Theme.radius + 2
    color: Theme.card
    border.width: 1
    border.color: Theme.border

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.snug
        anchors.rightMargin: Theme.tight
        spacing: Theme.tight

        Icon {
            symbol: "folder"
            color: Theme.secondaryText
        }
        PathText {
            path: row.path
            Layout.fillWidth: true
        }
        OutlineButton {
            text: qsTr("Change…")
            onClicked: chooser.open()
        }
    }
    FolderChooser {
        id: chooser

        path: row.path
        onChosen: path => row.chosen(path)
    }
}
