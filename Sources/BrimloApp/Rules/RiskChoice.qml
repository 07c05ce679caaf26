pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brimlo

// A choice of one rating, each with its meaning for the author of a rule. Shows `risk`; its owner
// changes that on `chosen`.
ColumnLayout {
    id: choice

    property string risk

    signal chosen(string risk)

    spacing: 5
    Layout.fillWidth: true

    Label {
        text: qsTr("How risky is deleting it?")
        font.weight: Font.Medium
        Layout.fillWidth: true
        Layout.bottomMargin: 2
    }
    Repeater {
        model: [
            {
                risk: "safe",
                line: qsTr("The app recreates this by itself and you would not notice. Preselected in Smart Clean.")
            },
            {
                risk: "rebuild",
                line: qsTr("Recreated later, but it costs time or a re-download. Not preselected.")
            },
            {
                risk: "review",
                line: qsTr("Could be your own data. Never preselected; you decide item by item.")
            }
        ]

        T.RadioButton {
            id: option

            required property var modelData
            readonly property bool isChosen: choice.risk === modelData.risk

            implicitHeight: implicitContentHeight + 2 * padding
            padding: 9
            hoverEnabled: true
            checkable: false
            autoExclusive: false
            text: Format.risk(modelData.risk)
            Layout.fillWidth: true
            onClicked: choice.chosen(modelData.risk)
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            Keys.onDownPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            Accessible.name: text
            Accessible.description: modelData.line
            Accessible.checkable: true
            Accessible.checked: isChosen
            Accessible.onPressAction: clicked()

            background: Rectangle {
                radius: Theme.radius
                color: option.isChosen ? Theme.faded(RiskWords.fill(option.modelData.risk), 0.1) : option.hovered ? Theme.subtle : Theme.faded(Theme.text, 0)
                border.width: 1
                border.color: option.isChosen ? RiskWords.fill(option.modelData.risk) : Theme.border

                FocusRing {
                    shown: option.visualFocus
                }
            }
            contentItem: RowLayout {
                spacing: Theme.snug

                RadioMark {
                    on: option.isChosen
                    ink: RiskWords.ink(option.modelData.risk)
                    Layout.alignment: Qt.AlignTop
                }
                ColumnLayout {
                    spacing: 1
                    Layout.fillWidth: true

                    Label {
                        text: option.text
                        color: RiskWords.ink(option.modelData.risk)
                        font.weight: Font.DemiBold
                        Accessible.ignored: true
                    }
                    Label {
                        text: option.modelData.line
                        secondary: true
                        font.pixelSize: Theme.small
                        wrapMode: Text.Wrap
                        Layout.fillWidth: true
                        Accessible.ignored: true
                    }
                }
            }
        }
    }

    // The round mark of a radio button.
    component RadioMark: Rectangle {
        property bool on: false
        property color ink: Theme.accentText

        implicitWidth: Theme.scaled(16)
        implicitHeight: implicitWidth
        radius: height / 2
        color: "transparent"
        border.width: on ? width * 0.3 : 1.5
        border.color: on ? ink : Theme.secondaryText
    }
}
