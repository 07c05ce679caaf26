pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// What of the user's rule files could not be used.
ColumnLayout {
    id: issues

    // A folder of foreign files could fill the screen.
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
