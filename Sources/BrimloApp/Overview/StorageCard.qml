pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// How full the disk is, and how much of that is in the Trash.
Card {
    id: card

    // The bar grows from zero when the screen is first visible.
    property bool barGrown: false
    readonly property int grown: barGrown ? 1 : 0
    readonly property var shares: [
        {
            name: qsTr("Used"),
            fraction: AppModel.machine.volume.takenShare * grown,
            color: Theme.accentText
        },
        {
            name: AppModel.machine.volume.hasPurgeable ? qsTr("Purgeable") : "",
            fraction: AppModel.machine.volume.purgeableShare * grown,
            color: Theme.rebuild
        },
        {
            name: qsTr("Free"),
            fraction: AppModel.machine.volume.freeShare * grown,
            color: Theme.mixed(Theme.card, Theme.text, 0.12)
        }
    ]

    padding: Theme.roomy
    visible: AppModel.machine.volume.isKnown

    LineEnds {
        start: ColumnLayout {
            spacing: 2

            RowLayout {
                spacing: 6

                Icon {
                    symbol: "internaldrive"
                    size: 14
                    color: Theme.secondaryText
                }
                Label {
                    text: AppModel.machine.volume.isSystem ? Desktop.bootVolume : qsTr("Home disk")
                    secondary: true
                    font.weight: Font.Medium
                    Accessible.role: Accessible.Heading
                }
            }
            RowLayout {
                spacing: Theme.tight

                Label {
                    id: available

                    text: Format.bytes(AppModel.machine.volume.available)
                    font.pixelSize: Theme.large
                    font.weight: Font.DemiBold
                    Layout.alignment: Qt.AlignBaseline
                }
                Label {
                    text: qsTr("free of %1").arg(Format.bytes(AppModel.machine.volume.total))
                    secondary: true
                    font.pixelSize: Theme.title
                    Layout.alignment: Qt.AlignBaseline
                }
            }
        }
        end: RowLayout {
            spacing: Theme.snug
            visible: AppModel.machine.trashBytes > 0

            Icon {
                symbol: "trash"
                color: Theme.secondaryText
            }
            Label {
                text: qsTr("%1 in Trash").arg(Format.bytes(AppModel.machine.trashBytes)) + (AppModel.machine.trashFrees === "" ? "" : ", " + AppModel.machine.trashFrees)
                secondary: true
            }
            OutlineButton {
                text: qsTr("Empty Trash")
                enabled: AppModel.busy === ""
                onClicked: AppModel.history.question.askToEmpty()
            }
        }
    }
    FlatBar {
        shares: card.shares
        implicitHeight: 12
        label: qsTr("Storage")
        Layout.fillWidth: true
        Layout.topMargin: Theme.tiny
    }
    LineEnds {
        start: RowLayout {
            spacing: Theme.roomy

            Repeater {
                model: card.shares

                LegendEntry {
                    required property var modelData

                    color: modelData.color
                    text: modelData.name
                    visible: text !== ""
                }
            }
        }
        end: [
            PlainButton {
                text: qsTr("Why is it full?")
                help: qsTr("Account for all that is taken, the largest first")
                onClicked: AppModel.diskAccount.isOpen = true
            },
            PlainButton {
                text: qsTr("Outside your files…")
                help: qsTr("Measure what the system keeps: its journal, packages and the like")
                onClicked: AppModel.machine.showsSystem = true
            }
        ]
    }
    RowLayout {
        spacing: Theme.tight
        visible: AppModel.analyzer.grewMost !== ""
        Layout.fillWidth: true

        Label {
            text: AppModel.analyzer.grewMost
            secondary: true
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        PlainButton {
            text: qsTr("What grew")
            help: qsTr("Show the folders with their growth")
            onClicked: AppModel.section = Sections.Analyzer
        }
    }

    // One entry of the bar's legend.
    component LegendEntry: RowLayout {
        id: entry

        property color color
        property string text

        spacing: 6
        Layout.fillWidth: false

        Rectangle {
            implicitWidth: Theme.scaled(9)
            implicitHeight: implicitWidth
            radius: 3
            color: entry.color
            Accessible.ignored: true
        }
        Label {
            text: entry.text
            secondary: true
            font.pixelSize: Theme.small
        }
    }
}
