pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The folders that are equal as a whole; all copies in one of them can be kept.
Sheet {
    id: sheet

    readonly property DuplicateSearch search: AppModel.duplicates
    readonly property var sets: search.equalFolders
    readonly property var lines: sets.reduce((lines, set) => lines.concat(set.folders.concat(set.larger).map((folder, index) => ({
                            folder: folder,
                            heading: index === 0 ? headingOf(set) : index === set.folders.length ? qsTr("and all of it is in a larger folder:") : ""
                        }))), [])

    function headingOf(set) {
        const files = set.files === 1 ? qsTr("1 file") : qsTr("%1 files").arg(Format.count(set.files));
        return set.folders.length > 1 ? qsTr("%1 equal folders, each %2 and %3").arg(Format.count(set.folders.length)).arg(files).arg(Format.bytes(set.bytes)) : qsTr("A folder of %1 and %2").arg(files).arg(Format.bytes(set.bytes));
    }

    title: qsTr("Equal folders")
    subtitle: qsTr("Keep one of each set: its copies stay whatever else is chosen, and those in the others are extras.")
    symbol: "folder"
    preferredWidth: 680
    onDismissed: presented = false
    defaultButton: done
    footer: [
        Item {
            Layout.fillWidth: true
        },
        SolidButton {
            id: done

            text: qsTr("Done")
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
            readonly property bool isKept: sheet.search.keptFolders.includes(modelData.folder)

            function toggle() {
                if (isKept)
                    sheet.search.release(modelData.folder);
                else
                    sheet.search.keepFolder(modelData.folder);
            }

            text: (modelData.heading !== "" ? modelData.heading + ": " : "") + modelData.folder
            Accessible.checkable: true
            Accessible.checked: isKept
            onClicked: {
                list.currentIndex = index;
                list.forceActiveFocus(Qt.MouseFocusReason);
            }

            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true

                Label {
                    text: row.modelData.heading
                    visible: text !== ""
                    font.weight: Font.DemiBold
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                    Layout.topMargin: row.index > 0 ? Theme.snug : 0
                    Accessible.ignored: true
                }
                PathText {
                    path: row.modelData.folder
                    Layout.fillWidth: true
                    Accessible.ignored: true
                }
            }
            OutlineButton {
                text: row.isKept ? qsTr("Kept") : qsTr("Keep")
                symbol: row.isKept ? "checkmark" : ""
                help: row.isKept ? qsTr("Stop keeping every copy in this folder") : qsTr("Keep every copy in this folder")
                focusPolicy: Qt.NoFocus
                Layout.alignment: Qt.AlignBottom
                onClicked: row.toggle()
            }
        }
        onOpened: (currentItem as ListRow)?.toggle()
        Keys.onSpacePressed: (currentItem as ListRow)?.toggle()
    }
}
