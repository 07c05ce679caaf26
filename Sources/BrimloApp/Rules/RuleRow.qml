import QtQuick
import QtQuick.Layouts
import Brimlo

// One rule. The user's own can be edited and deleted, a built-in one copied and switched off.
ListRow {
    id: row

    required property int index
    required property bool isCustom
    required property string name
    required property string risk
    required property string details
    required property bool isEnabled
    required property bool expanded
    required property var places
    readonly property RuleRows rules: list?.model ?? null
    readonly property bool isFirstBuiltIn: !isCustom && ListView.previousSection !== ListView.section
    readonly property real headingHeight: isFirstBuiltIn ? heading.height : 0

    text: name + ", " + Format.risk(risk) + ", " + details
    width: (list?.width ?? 0) - (list?.leftMargin ?? 0) - (list?.rightMargin ?? 0)
    topPadding: 6 + headingHeight
    bottomPadding: 6
    onClicked: {
        list.currentIndex = index;
        list.forceActiveFocus(Qt.MouseFocusReason);
    }
    onDoubleClicked: list.opened(index)
    Accessible.checkable: !isCustom
    Accessible.checked: isEnabled

    // The list's own section delegate is not updated when a row is reused.
    Loader {
        id: heading

        parent: row
        width: row.width
        active: row.isFirstBuiltIn
        sourceComponent: RuleSection {}
    }
    Binding {
        target: row.background
        property: "anchors.topMargin"
        value: row.headingHeight
    }
    ColumnLayout {
        spacing: 2
        Layout.fillWidth: true

        RowLayout {
            spacing: Theme.tight
            Layout.fillWidth: true

            Label {
                id: title

                text: row.name
                secondary: !row.isEnabled
                font.weight: Font.Medium
                wrapMode: wide.advanceWidth > Layout.maximumWidth ? Text.Wrap : Text.NoWrap
                Layout.maximumWidth: Math.max(120, row.width - 370)

                TextMetrics {
                    id: wide

                    font: title.font
                    text: row.name
                }
            }
            RiskBadge {
                risk: row.risk
            }
            Item {
                Layout.fillWidth: true
            }
        }
        PathText {
            path: row.details
            secondary: true
            font.pixelSize: Theme.small
            Layout.fillWidth: true
        }
        Repeater {
            model: row.places

            Label {
                required property string modelData

                text: modelData
                secondary: true
                font.pixelSize: Theme.small
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }
    }
    PlainButton {
        symbol: row.expanded ? "chevron.down" : "chevron.right"
        help: row.expanded ? qsTr("Hide the places") : qsTr("Show the places and what they match now")
        ink: Theme.secondaryText
        focusPolicy: Qt.NoFocus
        onClicked: row.rules.toggleExpanded(row.index)
    }
    PlainButton {
        text: qsTr("Edit")
        symbol: "pencil"
        visible: row.isCustom
        focusPolicy: Qt.NoFocus
        onClicked: row.rules.edit(row.index)
    }
    PlainButton {
        text: qsTr("Delete")
        symbol: "trash"
        ink: Theme.reviewText
        visible: row.isCustom
        focusPolicy: Qt.NoFocus
        onClicked: row.rules.remove(row.index)
    }
    PlainButton {
        symbol: "doc.on.doc"
        help: qsTr("Copy into a new rule")
        ink: Theme.secondaryText
        visible: !row.isCustom
        focusPolicy: Qt.NoFocus
        onClicked: row.rules.copy(row.index)
    }
    Toggle {
        label: row.name
        on: row.isEnabled
        visible: !row.isCustom
        focusPolicy: Qt.NoFocus
        onSwitched: value => row.rules.setEnabled(row.index, value)
    }

    // The header of the built-in rules.
    component RuleSection: Item {
        id: heading

        implicitHeight: words.implicitHeight + Theme.wide + Theme.tight

        SectionHeading {
            id: words

            text: qsTr("Built-in rules")
            line: qsTr("These ship with Brimlo. Turn one off to exclude it from Smart Clean and auto-clean; it stays here so you can turn it back on. Built-in rules can't be edited — copy one into a new rule to customize it.")
            x: Theme.snug
            y: Theme.wide
            width: Math.min(heading.width - 2 * Theme.snug, 820)
        }
    }
}
