pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// All keys, by the place where they work.
Sheet {
    id: sheet

    required property AppActions actions

    readonly property var lines: [
        [qsTr("Everywhere"), actions.goKeys(0) + " – " + actions.goKeys(Sections.all.length - 1), qsTr("Go to a screen")],
        ["", actions.rescanKeys, qsTr("Rescan")],
        ["", actions.undoKeys, qsTr("Undo the last clean or change")],
        ["", "Ctrl+F", qsTr("Search in the screen")],
        ["", "Ctrl+Y", qsTr("Preview a picture in a list of files")],
        ["", "Shift+F10", qsTr("Open the menu of a row")],
        ["", actions.shortcutKeys.join(", "), qsTr("Show this list")],
        ["", actions.quitKeys, qsTr("Quit")],
        [qsTr("In a list"), "↑ ↓", qsTr("Go to a row; with Shift select the rows between")],
        ["", qsTr("Letters"), qsTr("Go to the next row that begins with them")],
        ["", qsTr("Space"), qsTr("Tick, select or keep a row")],
        ["", "← →", qsTr("Fold or unfold a row")],
        ["", qsTr("Return"), qsTr("Open a row")],
        ["", "Ctrl+A", qsTr("Select all rows")],
        ["", qsTr("Delete"), qsTr("Review the selected rows")],
        ["", qsTr("Escape"), qsTr("Select no row; stop a search")],
        [qsTr("In the analyzer"), qsTr("→, Return"), qsTr("Open a folder")],
        ["", qsTr("←, Alt+↑, Backspace"), qsTr("Go to the folder above")],
        [qsTr("In a sheet"), qsTr("Return"), qsTr("Press the main button")],
        ["", "Ctrl+Return, Ctrl+S", qsTr("Save a rule")],
        ["", qsTr("Escape"), qsTr("Close the sheet")]
    ]

    title: qsTr("Keyboard shortcuts")
    symbol: "info.circle"
    preferredWidth: 560
    defaultButton: close
    footer: [
        Item {
            Layout.fillWidth: true
        },
        SolidButton {
            id: close

            text: qsTr("Close")
            onClicked: sheet.dismissed()
        }
    ]

    ScrollList {
        id: list

        label: sheet.title
        model: sheet.lines
        implicitHeight: contentHeight
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: Math.min(contentHeight, 160)

        delegate: ListRow {
            id: row

            required property int index
            required property var modelData
            readonly property string heading: modelData[0]

            text: (heading !== "" ? heading + ": " : "") + modelData[1] + ", " + modelData[2]
            topPadding: heading !== "" && index > 0 ? Theme.snug : 2
            bottomPadding: heading !== "" ? Theme.tight : 2
            onClicked: {
                list.currentIndex = index;
                list.forceActiveFocus(Qt.MouseFocusReason);
            }

            GridLayout {
                columns: 2
                columnSpacing: Theme.snug
                rowSpacing: Theme.tiny
                Layout.fillWidth: true

                Eyebrow {
                    text: row.heading
                    visible: text !== ""
                    Accessible.ignored: true
                    Layout.columnSpan: 2
                }
                Label {
                    text: row.modelData[1]
                    font.weight: Font.Medium
                    wrapMode: Text.Wrap
                    Accessible.ignored: true
                    Layout.preferredWidth: 180
                    Layout.alignment: Qt.AlignTop
                }
                Label {
                    text: row.modelData[2]
                    secondary: true
                    wrapMode: Text.Wrap
                    Accessible.ignored: true
                    Layout.fillWidth: true
                }
            }
        }
    }
}
