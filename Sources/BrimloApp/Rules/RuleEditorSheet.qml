pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The rule editor: the form, and a preview of what the rule would match.
Sheet {
    id: sheet

    readonly property RuleDraft draft: AppModel.rules.ruleDraft

    presented: draft !== null
    onDismissed: AppModel.rules.keepRuleDraft()
    onOpened: form.begin()

    // Kept, because the draft is deleted when the editor closes, and the fading sheet would show
    // empty fields.
    exit: null
    preferredWidth: 960
    symbol: "slider.horizontal.3"
    title: draft?.isNew ?? true ? qsTr("New cleanup rule") : qsTr("Edit rule")
    footer: [
        Label {
            readonly property string failure: sheet.draft?.saveFailure ?? ""

            text: failure || qsTr("Removed items go to Trash first. Custom rules never run in auto-clean unless you enable it in Settings.")
            secondary: failure === ""
            font.pixelSize: Theme.small
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        },
        OutlineButton {
            text: qsTr("Cancel")
            Layout.leftMargin: Theme.normal
            onClicked: AppModel.rules.closeRuleDraft()
        },
        SolidButton {
            text: qsTr("Save rule")
            enabled: preview.canSave
            onClicked: AppModel.rules.saveRuleDraft()
        }
    ]

    RulePreview {
        id: preview

        draft: sheet.draft
    }
    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+S"]
        enabled: sheet.presented && preview.canSave
        onActivated: AppModel.rules.saveRuleDraft()
    }
    RowLayout {
        spacing: Theme.snug
        Layout.fillWidth: true
        Layout.fillHeight: true

        RuleForm {
            id: form

            draft: sheet.draft
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: 300
            Layout.leftMargin: -padding
            Layout.topMargin: -padding
            Layout.bottomMargin: -padding
        }
        RulePreviewPane {
            preview: preview
            Layout.fillHeight: true
            Layout.preferredWidth: Math.min(Theme.scaled(310), sheet.availableWidth * 0.42)
            Layout.maximumWidth: Layout.preferredWidth
        }
    }
}
