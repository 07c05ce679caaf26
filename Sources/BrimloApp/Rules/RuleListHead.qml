pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The header of the user's own rules.
ColumnLayout {
    id: head

    width: parent?.width ?? 0
    spacing: Theme.tight

    SectionHeading {
        text: qsTr("Your rules")
        Layout.fillWidth: true
        Layout.topMargin: Theme.normal
        Layout.leftMargin: Theme.snug
        Layout.rightMargin: Theme.snug
    }
    RuleIssues {
        Layout.fillWidth: true
        Layout.leftMargin: Theme.snug
        Layout.rightMargin: Theme.snug
    }
    Label {
        text: qsTr("You haven't added any rules yet. Point a rule at the folders an app fills and it joins Smart Clean with the same review step and undo.")
        secondary: true
        wrapMode: Text.Wrap
        lineHeight: 1.15
        visible: AppModel.rules.customCount === 0
        Layout.fillWidth: true
        Layout.maximumWidth: 820
        Layout.leftMargin: Theme.snug
        Layout.rightMargin: Theme.snug
    }

    // Problems in the user's rule files.
    component RuleIssues: ColumnLayout {
        id: issues

        // Limited, because a folder of foreign files could fill the screen.
        readonly property int most: 5
        readonly property var lines: AppModel.rules.ruleIssues

        spacing: Theme.tiny
        visible: lines.length > 0

        Notice {
            text: qsTr("Some rule files could not be used:") + "\n" + issues.lines.slice(0, issues.most).join("\n")
            symbol: "exclamationmark.triangle"
            color: Theme.rebuild
        }
        Label {
            text: qsTr("+ %1 more").arg(Format.count(issues.lines.length - issues.most))
            secondary: true
            visible: issues.lines.length > issues.most
        }
    }
}
