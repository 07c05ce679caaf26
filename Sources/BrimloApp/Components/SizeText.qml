import QtQuick
import Brimlo

// A size, aligned right, with the unit in a column of its own so that numbers align.
Item {
    id: size

    property real bytes: 0
    property bool secondary: false
    property alias font: figure.font
    property color color: secondary ? Theme.secondaryText : Theme.text
    readonly property string text: Format.bytes(bytes)
    readonly property int gap: text.lastIndexOf(" ")
    readonly property int unitWidth: Math.ceil(widestUnit.advanceWidth)

    implicitWidth: Math.ceil(widest.advanceWidth) + unitWidth + 3
    implicitHeight: figure.implicitHeight
    baselineOffset: figure.baselineOffset
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    TextMetrics {
        id: widest

        font: figure.font
        text: Format.evenDigits("888.88", Theme.family)
    }
    TextMetrics {
        id: widestUnit

        font: unit.font
        text: "MB"
    }
    Label {
        id: figure

        text: Format.evenDigits(size.text.slice(0, size.gap), Theme.family)
        color: size.color
        horizontalAlignment: Text.AlignRight
        anchors.left: parent.left
        anchors.right: unit.left
        anchors.rightMargin: 3
        Accessible.ignored: true
    }
    Label {
        id: unit

        text: size.text.slice(size.gap + 1)
        secondary: true
        font: figure.font
        width: Math.max(size.unitWidth, Math.ceil(implicitWidth))
        anchors.right: parent.right
        Accessible.ignored: true
    }
}
