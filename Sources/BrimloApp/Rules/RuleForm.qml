import QtQuick
import Brimlo

// The fields of a rule.
ScrollPane {
    id: form

    property RuleDraft draft

    function begin() {
        contentY = 0;
        advanced.expanded = !(draft?.isNew ?? true);
        name.field.forceActiveFocus();
    }

    // Leaves room for the scroll bar and for focus rings, which would be clipped.
    padding: Theme.snug
    spacing: Theme.normal
    maximumWidth: 2000

    FormField {
        id: name

        title: qsTr("Name")
        placeholder: qsTr("e.g. Slack cache")
        value: form.draft?.name ?? ""
        onEdited: text => form.draft.name = text
    }
    FormField {
        title: qsTr("Shown under the rule name")
        value: form.draft?.group ?? ""
        onEdited: text => form.draft.group = text
    }
    RulePaths {
        draft: form.draft
    }
    RiskChoice {
        risk: form.draft?.risk ?? ""
        onChosen: risk => form.draft.risk = risk
    }
    FormField {
        title: qsTr("What happens after it is deleted?")
        placeholder: qsTr("e.g. The app rebuilds it on next launch.")
        caption: qsTr("A short sentence shown next to the rule")
        value: form.draft?.regenerates ?? ""
        onEdited: text => form.draft.regenerates = text

        OutlineButton {
            text: qsTr("Use suggested wording")
            visible: form.draft?.regenerates === ""
            onClicked: form.draft.useSuggestedWording()
        }
    }
    RuleAdvanced {
        id: advanced

        draft: form.draft
    }
}
