import QtQuick
import QtQuick.Layouts
import Brimlo

// The totals of a search, and the controls to start another.
Item {
    id: bar

    required property string folder
    property string text
    property string line

    signal folderChosen(string path)
    signal searchWanted

    implicitHeight: row.implicitHeight + 2 * Theme.snug

    LineEnds {
        id: row

        x: Theme.wide
        y: Theme.snug
        width: bar.width - 2 * Theme.wide
        // Wraps.
        start: Flow {
            spacing: Theme.snug
            Layout.fillWidth: true
            Layout.preferredWidth: words.implicitWidth + spacing + line.implicitWidth

            Label {
                id: words

                text: bar.text
                font.pixelSize: Theme.title
                font.weight: Font.DemiBold
            }
            Label {
                id: line

                text: bar.line
                secondary: true
                height: words.height
                verticalAlignment: Text.AlignVCenter
            }
        }
        end: [
            OutlineButton {
                text: qsTr("Change folder…")
                symbol: "folder"
                onClicked: chooser.open()
            },
            OutlineButton {
                text: qsTr("Search again")
                symbol: "arrow.clockwise"
                onClicked: bar.searchWanted()
            }
        ]
    }
    FolderChooser {
        id: chooser

        path: bar.folder
        onChosen: path => bar.folderChosen(path)
    }
}
