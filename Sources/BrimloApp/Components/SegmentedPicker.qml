pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A choice between a few segments, a list of {text, symbol, help}, with a `name` if `help` is no
// name. Its owner sets `currentIndex` on `activated`.
FocusScope {
    id: picker

    property var model: []
    property int currentIndex: 0
    property string label

    signal activated(int index)

    function move(by) {
        const next = Math.min(model.length - 1, Math.max(0, currentIndex + by));
        if (next !== currentIndex)
            activated(next);
    }

    implicitWidth: line.implicitWidth + 4
    implicitHeight: Theme.controlHeight
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.45
    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)
    Accessible.role: Accessible.PageTabList
    Accessible.name: label
    Accessible.focusable: true

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.faded(Theme.text, 0.08)

        FocusRing {
            shown: picker.activeFocus
        }
    }
    RowLayout {
        id: line

        anchors.fill: parent
        anchors.margins: 2
        spacing: 2

        Repeater {
            model: picker.model

            T.RadioButton {
                id: segment

                required property var modelData
                required property int index
                readonly property bool chosen: picker.currentIndex === index

                implicitWidth: inner.implicitWidth + (modelData.text ? 22 : 18)
                Layout.fillWidth: true
                Layout.fillHeight: true
                focusPolicy: Qt.NoFocus
                hoverEnabled: true
                checkable: false
                autoExclusive: false
                onClicked: picker.activated(index)
                Accessible.name: modelData.text || modelData.name || modelData.help || ""
                Accessible.checkable: true
                Accessible.checked: chosen
                Accessible.onPressAction: if (enabled)
                    clicked()

                background: Rectangle {
                    radius: Theme.radius - 2
                    color: segment.chosen ? (Theme.dark ? "#475059" : "#ffffff") : segment.hovered ? Theme.subtle : "transparent"
                    border.width: segment.chosen ? 1 : 0
                    border.color: Theme.border
                }
                contentItem: Item {
                    RowLayout {
                        id: inner

                        anchors.centerIn: parent
                        spacing: 6

                        Icon {
                            symbol: segment.modelData.symbol ?? ""
                            visible: symbol !== ""
                            size: 15
                            color: segment.chosen ? Theme.text : Theme.secondaryText
                        }
                        Label {
                            text: segment.modelData.text ?? ""
                            visible: text !== ""
                            secondary: !segment.chosen
                            font.weight: Font.Medium
                            Accessible.ignored: true
                        }
                    }
                }
                HelpTip {
                    text: segment.modelData.help ?? ""
                    shown: segment.hovered
                }
            }
        }
    }
}
