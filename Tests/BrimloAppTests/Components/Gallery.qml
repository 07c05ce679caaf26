import QtQuick
import QtQuick.Layouts
import Brimlo

// Every control in its usual states, for looking at; nothing here does anything.
Rectangle {
    id: gallery

    width: 1180
    height: 1160
    color: Theme.window

    RowLayout {
        anchors.fill: parent
        anchors.margins: Theme.wide
        spacing: Theme.roomy

        ColumnLayout {
            spacing: Theme.normal
            Layout.preferredWidth: 1
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop

            Card {
                Layout.fillWidth: true

                Eyebrow {
                    text: "Buttons"
                }
                RowLayout {
                    spacing: Theme.tight

                    SolidButton {
                        text: "Review & Clean…"
                        symbol: "sparkles"
                    }
                    OutlineButton {
                        text: "Preview"
                    }
                    OutlineButton {
                        text: "Disabled"
                        enabled: false
                    }
                    SolidButton {
                        text: "Clean"
                        enabled: false
                    }
                }
                RowLayout {
                    spacing: Theme.tight

                    ToolbarButton {
                        text: "Add rule"
                        symbol: "plus"
                    }
                    ToolbarButton {
                        symbol: "questionmark.circle"
                        help: "What do the ratings mean?"
                    }
                    ToolbarButton {
                        symbol: "arrow.clockwise"
                        help: "Rescan"
                        checked: true
                    }
                    ToolbarButton {
                        text: "Home"
                        symbol: "folder"
                        hasMenu: true
                    }
                    PlainButton {
                        text: "Documents"
                    }
                    Icon {
                        symbol: "chevron.right"
                        size: 13
                        color: Theme.secondaryText
                    }
                    PlainButton {
                        text: "Photos"
                    }
                    PlainButton {
                        symbol: "magnifyingglass"
                        help: "Reveal in Finder"
                    }
                }
            }
            Card {
                Layout.fillWidth: true

                SectionHeading {
                    text: "Settings"
                    line: "Auto-clean only touches items rated Safe, or Rebuilds items in projects idle past the limit."
                    Layout.fillWidth: true

                    Spinner {}
                    Spinner {
                        size: 28
                    }
                }
                Toggle {
                    text: "Automatically clean regenerable items when disk space is low"
                    on: true
                    Layout.fillWidth: true
                }
                Toggle {
                    text: "Automatically check for updates"
                    Layout.fillWidth: true
                }
                Toggle {
                    text: "Also run auto-clean when Brimlo is closed"
                    enabled: false
                    Layout.fillWidth: true
                }
                Stepper {
                    text: "Free-space threshold: 20 GB"
                    value: 20
                    from: 20
                    to: 500
                    step: 5
                    Layout.fillWidth: true
                }
                Divider {
                    Layout.fillWidth: true
                }
                RowLayout {
                    spacing: Theme.normal

                    CheckBox {
                        text: "All"
                        checkState: Qt.Checked
                    }
                    CheckBox {
                        text: "Some"
                        checkState: Qt.PartiallyChecked
                    }
                    CheckBox {
                        text: "None"
                    }
                    CheckBox {
                        text: "Off"
                        checkState: Qt.Checked
                        enabled: false
                    }
                }
                RowLayout {
                    spacing: Theme.tight

                    Field {
                        placeholder: "e.g. Slack cache"
                        Layout.fillWidth: true
                    }
                    Field {
                        text: "~/Library/*"
                        invalid: true
                        Layout.fillWidth: true
                    }
                }
                RowLayout {
                    spacing: Theme.tight

                    SearchField {
                        placeholder: "Search apps and tools"
                        Layout.fillWidth: true
                    }
                    SearchField {
                        text: "chrome"
                        Layout.fillWidth: true
                    }
                }
                RowLayout {
                    spacing: Theme.tight

                    Picker {
                        model: [
                            {
                                text: "All audiences",
                                symbol: ""
                            },
                            {
                                text: "Developers",
                                symbol: "hammer"
                            }
                        ]
                        currentIndex: 1
                    }
                    SegmentedPicker {
                        model: [
                            {
                                symbol: "list.bullet",
                                help: "List"
                            },
                            {
                                symbol: "square.grid.3x3.fill",
                                help: "Treemap"
                            }
                        ]
                    }
                    SegmentedPicker {
                        model: [
                            {
                                text: "Safe"
                            },
                            {
                                text: "Rebuilds"
                            },
                            {
                                text: "Review"
                            }
                        ]
                        currentIndex: 2
                    }
                }
            }
            ProgressLine {
                value: 0.4
                Layout.fillWidth: true
            }
            FlatBar {
                shares: [
                    {
                        fraction: 0.55,
                        color: Theme.accentText
                    },
                    {
                        fraction: 0.15,
                        color: Theme.info
                    }
                ]
                implicitHeight: 12
                Layout.fillWidth: true
            }
            FlatBar {
                fraction: 0.7
                Layout.fillWidth: true
            }
        }
        ColumnLayout {
            spacing: Theme.normal
            Layout.preferredWidth: 1
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop

            Notice {
                text: "Some items may contain your own files. They stay in Trash and can be put back."
            }
            Notice {
                text: "Full Disk Access is off, so protected caches are invisible to scans."
                symbol: "lock"
                buttonText: "Open System Settings"
                color: Theme.rebuild
            }
            ModeCards {
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: Theme.snug

                StatCard {
                    value: "1.24 GB"
                    label: "Freed immediately"
                    color: Theme.safe
                }
                StatCard {
                    value: "12.8 GB"
                    label: "Freed after emptying Trash"
                    color: Theme.info
                }
            }
            RowLayout {
                spacing: Theme.tight

                RiskBadge {
                    risk: "safe"
                }
                RiskBadge {
                    risk: 1
                }
                RiskBadge {
                    risk: "review"
                }
                Chip {
                    text: "Docker · permanent"
                    symbol: "shippingbox"
                    color: Theme.review
                }
                Chip {
                    text: "Trash"
                    symbol: "trash"
                    color: Theme.info
                }
                Chip {
                    text: "Kept"
                    symbol: "checkmark"
                }
            }
            Card {
                padding: 6
                spacing: 0
                Layout.fillWidth: true

                ScrollList {
                    id: list

                    implicitHeight: 190
                    Layout.fillWidth: true
                    currentIndex: 2
                    keyed: true
                    model: ["/home/ada/.cache/google-chrome/Default/Cache/Cache_Data/a-rather-long-folder-name/which-goes-on/index", "/home/ada/code/web/node_modules", "/home/ada/Bilder/‮gpj.exe\nline two", "/var/log", "/opt", "/srv", "/tmp"]
                    delegate: ListRow {
                        id: row

                        required property string modelData
                        required property int index

                        selected: index === 1
                        text: modelData

                        CheckBox {
                            checkState: row.index % 3 === 0 ? Qt.Checked : Qt.Unchecked
                            label: row.modelData
                        }
                        Icon {
                            symbol: row.index % 2 ? "folder.fill" : "doc.fill"
                            color: FileKinds.color(row.index)
                        }
                        PathText {
                            path: row.modelData
                            Layout.fillWidth: true
                        }
                        SizeText {
                            bytes: [1240000000, 812000, 0, 11110000, 98765432100, 345e12, 1500000][row.index]
                        }
                    }
                }
            }
            RowLayout {
                spacing: Theme.normal

                Card {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1

                    EmptyState {
                        symbol: "sparkles"
                        title: "Nothing scanned yet"
                        line: "Press Rescan to find cleanable items."
                        Layout.fillWidth: true

                        SolidButton {
                            text: "Rescan"
                        }
                    }
                }
                Card {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1

                    RiskLegend {
                        Layout.fillWidth: true
                    }
                }
            }
        }
    }
}
