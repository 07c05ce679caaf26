import QtQuick
import QtQuick.Layouts
import Brimlo

// What stands above the user's own rules.
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
}
