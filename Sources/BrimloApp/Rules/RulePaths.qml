pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The paths of a rule, one field each.
ColumnLayout {
    id: paths

    property RuleDraft draft
    property int choosing: 0

    function choose(row) {
        choosing = row;
        chooser.open();
    }

    spacing: 5
    Layout.fillWidth: true

    Label {
        text: qsTr("Paths")
        font.weight: Font.Medium
        Layout.fillWidth: true
    }
    Repeater {
        model: paths.draft?.paths.length ?? 0

        RowLayout {
            id: row

            required property int index

            spacing: Theme.tight
            Layout.fillWidth: true

            Field {
                text: paths.draft?.paths[row.index] ?? ""
                placeholder: "~/Library/Caches/com.example.app"
                label: qsTr("Path %1").arg(row.index + 1)
                Layout.fillWidth: true
                onTextEdited: paths.draft.setPath(row.index, text)
            }
            OutlineButton {
                text: qsTr("Choose…")
                onClicked: paths.choose(row.index)
            }
            PlainButton {
                symbol: "minus.circle"
                help: qsTr("Remove this path")
                ink: Theme.secondaryText
                onClicked: paths.draft.removePath(row.index)
            }
        }
    }
    RowLayout {
        spacing: Theme.tight
        Layout.fillWidth: true

        FormCaption {
            text: qsTr("Use * as a wildcard, e.g. ~/Downloads/*.dmg")
        }
        PlainButton {
            text: qsTr("Add path")
            symbol: "plus.circle"
            ink: Theme.accentText
            onClicked: paths.draft.addPath()
        }
    }
    FolderChooser {
        id: chooser

        path: Places.home
        onChosen: path => paths.draft?.choosePath(paths.choosing, path)
    }
}
