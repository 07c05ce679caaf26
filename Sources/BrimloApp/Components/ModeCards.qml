pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// The disposal modes, one card each; `mode` is the current one.
RowLayout {
    id: cards

    property string mode: "trash"
    property var modes: [
        {
            mode: "trash",
            symbol: "trash",
            title: qsTr("Move to Trash"),
            detail: qsTr("Instant. Put Back works. Space is freed when you empty the Trash."),
            tag: ""
        }
    ]

    spacing: Theme.snug
    Layout.fillHeight: false

    Repeater {
        model: cards.modes

        T.RadioButton {
            id: card

            required property var modelData
            readonly property bool chosen: cards.mode === modelData.mode

            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: implicitHeight
            Layout.preferredWidth: 1
            implicitHeight: line.implicitHeight + 2 * Theme.snug
            padding: Theme.snug
            hoverEnabled: true
            checkable: false
            autoExclusive: false
            onClicked: cards.mode = modelData.mode
            Keys.onReturnPressed: clicked()
            Accessible.name: modelData.title
            Accessible.description: modelData.detail
            Accessible.checkable: true
            Accessible.checked: chosen
            Accessible.onPressAction: if (enabled)
                    clicked()

            background: Rectangle {
                radius: Theme.radius + 2
                color: card.chosen ? Theme.selection : card.hovered ? Theme.subtle : Theme.faded(Theme.text, 0)
                border.width: card.chosen ? 1.5 : 1
                border.color: card.chosen ? Theme.accentText : Theme.fieldBorder

                FocusRing {
                    shown: card.visualFocus
                }
            }
            contentItem: Item {
                RowLayout {
                    id: line

                    anchors.left: parent.left
                    anchors.right: parent.right
                    spacing: Theme.snug

                    Icon {
                        symbol: card.modelData.symbol
                        size: 20
                        color: card.chosen ? Theme.accentText : Theme.secondaryText
                    }
                    ColumnLayout {
                        spacing: 2
                        Layout.fillWidth: true

                        RowLayout {
                            spacing: Theme.tight

                            Label {
                                text: card.modelData.title
                                font.weight: Font.DemiBold
                                Accessible.ignored: true
                            }
                            Chip {
                                text: card.modelData.tag ?? ""
                                visible: text !== ""
                                color: Theme.accentText
                            }
                        }
                        Label {
                            text: card.modelData.detail
                            secondary: true
                            font.pixelSize: Theme.small
                            wrapMode: Text.Wrap
                            Layout.fillWidth: true
                            Accessible.ignored: true
                        }
                    }
                    Icon {
                        symbol: "checkmark.circle.fill"
                        size: 18
                        color: Theme.accentText
                        opacity: card.chosen ? 1 : 0
                    }
                }
            }
        }
    }
}
