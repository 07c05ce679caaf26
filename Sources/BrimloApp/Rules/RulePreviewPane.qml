pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The errors and warnings of a rule, and its current matches.
Card {
    id: pane

    required property RulePreview preview

    color: Theme.faded(Theme.text, 0.04)
    bordered: false
    spacing: Theme.snug

    RowLayout {
        spacing: Theme.tight
        Layout.fillWidth: true

        Label {
            text: qsTr("Preview: what this rule matches right now")
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
        }
        Spinner {
            symbol: "arrow.triangle.2.circlepath"
            running: pane.preview.isWorking
            visible: running
            Layout.alignment: Qt.AlignTop
        }
    }
    RuleFaults {
        lines: pane.preview.errors
        symbol: "exclamationmark.circle.fill"
        ink: Theme.reviewText
    }
    RuleFaults {
        lines: pane.preview.warnings
        symbol: "exclamationmark.triangle.fill"
        ink: Theme.rebuildText
    }
    RuleFaults {
        lines: pane.preview.missing
        symbol: "info.circle"
        ink: Theme.secondaryText
    }
    Label {
        text: qsTr("%1 item(s) · %2").arg(Format.count(pane.preview.itemCount)).arg(Format.bytes(pane.preview.totalBytes))
        font.pixelSize: Theme.title
        font.weight: Font.DemiBold
        visible: pane.preview.itemCount > 0
        Layout.fillWidth: true
    }
    Label {
        text: qsTr("Nothing matches yet. The rule is still valid; it will show up when the folder exists.")
        secondary: true
        wrapMode: Text.Wrap
        lineHeight: 1.15
        visible: pane.preview.hasResult && pane.preview.itemCount === 0
        Layout.fillWidth: true
    }
    Repeater {
        model: pane.preview.paths

        PathText {
            required property string modelData

            path: modelData
            font.pixelSize: Theme.small
            Layout.fillWidth: true
        }
    }
    Label {
        text: qsTr("+ %1 more").arg(Format.count(pane.preview.moreCount))
        secondary: true
        font.pixelSize: Theme.small
        visible: pane.preview.moreCount > 0
    }
    Item {
        Layout.fillHeight: true
    }
}
