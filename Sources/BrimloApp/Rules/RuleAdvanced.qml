import QtQuick
import QtQuick.Layouts
import Brimlo

// The fields that most rules leave empty.
ColumnLayout {
    id: advanced

    property RuleDraft draft
    property bool expanded: false

    spacing: Theme.normal
    Layout.fillWidth: true

    PlainButton {
        text: qsTr("Advanced")
        symbol: advanced.expanded ? "chevron.down" : "chevron.right"
        symbolSize: 13
        font.weight: Font.Medium
        Layout.leftMargin: -leftPadding
        Accessible.checkable: true
        Accessible.checked: advanced.expanded
        onClicked: advanced.expanded = !advanced.expanded
    }
    ColumnLayout {
        spacing: Theme.normal
        visible: advanced.expanded
        Layout.fillWidth: true

        FormField {
            title: qsTr("Apps to close first")
            caption: qsTr("Comma separated app names, e.g. Slack, Discord")
            value: advanced.draft?.quitApps ?? ""
            onEdited: text => advanced.draft.quitApps = text
        }
        Toggle {
            text: qsTr("Clean the contents of each folder, keep the folder itself")
            on: advanced.draft?.contentsOnly ?? false
            Layout.fillWidth: true
            onSwitched: value => advanced.draft.contentsOnly = value
        }
        Toggle {
            text: qsTr("Only match what has not changed for a while")
            on: advanced.draft?.useMinAge ?? false
            Layout.fillWidth: true
            onSwitched: value => advanced.draft.useMinAge = value
        }
        Stepper {
            text: qsTr("%1 days").arg(value)
            value: advanced.draft?.minAgeDays ?? 0
            from: 1
            to: 3650
            visible: advanced.draft?.useMinAge ?? false
            Layout.fillWidth: true
            onStepped: value => advanced.draft.minAgeDays = value
        }
        FormField {
            title: qsTr("Never match names like")
            caption: qsTr("Comma separated patterns, e.g. *.plist, keep-*")
            value: advanced.draft?.excludes ?? ""
            onEdited: text => advanced.draft.excludes = text
        }
        FormField {
            title: qsTr("Official clean command (optional)")
            value: advanced.draft?.command ?? ""
            onEdited: text => advanced.draft.command = text
        }
    }
}
