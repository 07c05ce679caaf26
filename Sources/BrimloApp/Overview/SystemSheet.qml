pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// What the system keeps outside the user's files: measured, with the commands that free it.
Sheet {
    id: sheet

    readonly property Machine machine: AppModel.machine

    title: qsTr("Outside your files")
    subtitle: qsTr("Brimlo measures this and never removes it. Each part has a command of its owner.")
    symbol: "internaldrive"
    preferredWidth: 680
    presented: machine.showsSystem
    onDismissed: machine.showsSystem = false
    defaultButton: done
    footer: [
        Item {
            Layout.fillWidth: true
        },
        SolidButton {
            id: done

            text: qsTr("Done")
            onClicked: sheet.machine.showsSystem = false
        }
    ]

    RowLayout {
        spacing: Theme.tight
        visible: sheet.machine.isMeasuringSystem && list.count === 0

        Spinner {}
        Label {
            text: qsTr("Measuring…")
            secondary: true
        }
    }
    Label {
        text: qsTr("There is nothing of that kind that you may look at.")
        visible: !sheet.machine.isMeasuringSystem && list.count === 0
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
    ScrollList {
        id: list

        label: sheet.title
        model: sheet.machine.systemParts
        visible: count > 0
        implicitHeight: contentHeight
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: Math.min(contentHeight, 160)
        onOpened: index => sheet.machine.copySystemCommands(index)

        delegate: ListRow {
            id: row

            required property int index
            required property var modelData

            text: modelData.name + ", " + Format.bytes(modelData.size) + ", " + modelData.about
            topPadding: Theme.tight
            bottomPadding: Theme.tight
            onClicked: {
                list.currentIndex = index;
                list.forceActiveFocus(Qt.MouseFocusReason);
            }

            ColumnLayout {
                spacing: 3
                Layout.fillWidth: true

                RowLayout {
                    spacing: Theme.tight
                    Layout.fillWidth: true

                    Label {
                        text: row.modelData.name
                        font.weight: Font.Medium
                        Accessible.ignored: true
                    }
                    Label {
                        text: qsTr("what you may read of it")
                        visible: !row.modelData.isComplete
                        secondary: true
                        font.pixelSize: Theme.small
                        Layout.fillWidth: true
                    }
                }
                Label {
                    text: row.modelData.about
                    secondary: true
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                    Accessible.ignored: true
                }
                Repeater {
                    model: row.modelData.commands

                    CommandText {
                        required property string modelData

                        command: modelData
                        Layout.fillWidth: true
                    }
                }
            }
            SizeText {
                bytes: row.modelData.size
                Layout.alignment: Qt.AlignTop
            }
            PlainButton {
                symbol: "doc.on.doc"
                help: row.modelData.commands.length === 1 ? qsTr("Copy the command") : qsTr("Copy the commands")
                focusPolicy: Qt.NoFocus
                Layout.alignment: Qt.AlignTop
                onClicked: sheet.machine.copySystemCommands(row.index)
            }
        }
    }
}
