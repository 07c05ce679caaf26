pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A drop-down list of texts or of {text, symbol}. Its owner sets `currentIndex` on `activated`.
T.ComboBox {
    id: picker

    property string label: displayText
    property string help

    function wordsOf(entry) {
        return String(entry?.text ?? entry ?? "");
    }
    function symbolOf(entry) {
        return String(entry?.symbol ?? "");
    }
    readonly property var chosen: Array.isArray(model) ? model[currentIndex] : null

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: 11
    rightPadding: indicator.width + 15
    displayText: chosen !== null && chosen !== undefined ? wordsOf(chosen) : currentText
    font.family: Theme.family
    font.pixelSize: Theme.body
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Keys.onReturnPressed: popup.open()
    Accessible.role: Accessible.ComboBox
    Accessible.name: label
    Accessible.onPressAction: popup.open()

    contentItem: RowLayout {
        spacing: 7

        Icon {
            symbol: picker.symbolOf(picker.chosen)
            visible: symbol !== ""
            size: 15
        }
        Label {
            text: picker.displayText
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 10
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }
    indicator: Icon {
        symbol: "chevron.up.chevron.down"
        size: 13
        color: Theme.secondaryText
        x: picker.width - width - 9
        y: (picker.height - height) / 2
    }
    background: OutlineButtonStyle {
        button: null
        hovered: picker.hovered
        focused: picker.visualFocus
    }
    delegate: T.ItemDelegate {
        id: entry

        required property var modelData
        required property int index

        width: ListView.view.width
        implicitHeight: Theme.rowHeight - 2
        leftPadding: 9
        rightPadding: 9
        highlighted: picker.highlightedIndex === index
        Accessible.role: Accessible.ListItem
        Accessible.name: picker.wordsOf(modelData)
        contentItem: MenuLine {
            text: picker.wordsOf(entry.modelData)
            symbol: picker.symbolOf(entry.modelData)
            checked: picker.currentIndex === entry.index
            checkable: true
        }
        background: Rectangle {
            radius: 5
            color: entry.highlighted ? Theme.selection : "transparent"
        }
    }
    popup: T.Popup {
        y: picker.height + 4
        width: Math.max(picker.width, 210)
        height: Math.min(contentItem.implicitHeight + 10, 420)
        margins: 8
        padding: 5
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: picker.delegateModel
            currentIndex: picker.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ScrollBar {}
        }
        background: PopupGround {
            radius: Theme.radius + 2
        }
    }
    HelpTip {
        text: picker.help
        shown: picker.hovered && !picker.popup.visible
    }
}
