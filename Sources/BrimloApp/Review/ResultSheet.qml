import QtQuick
import QtQuick.Layouts
import Brimlo

// The result of a clean.
Sheet {
    id: sheet

    readonly property var report: AppModel.cleanup.lastReport

    title: report.hasProblems ? qsTr("Cleanup finished with problems") : report.untouched > 0 ? qsTr("Cleanup stopped") : qsTr("Cleanup complete")
    subtitle: {
        const processed = qsTr("%1 items processed").arg(Format.count(report.processed));
        return report.untouched > 0 ? qsTr("%1, %2 left untouched").arg(processed).arg(Format.count(report.untouched)) : processed;
    }
    symbol: report.hasProblems ? "exclamationmark.circle.fill" : "checkmark.circle.fill"
    symbolColor: report.hasProblems ? Theme.rebuild : Theme.safe
    presented: AppModel.cleanup.showResult
    onDismissed: AppModel.cleanup.showResult = false
    defaultButton: done
    footer: [
        OutlineButton {
            text: sheet.report.canUndoAll ? qsTr("Undo everything") : qsTr("Undo the others")
            symbol: "arrow.uturn.backward"
            visible: sheet.report.canUndo
            enabled: AppModel.busy === ""
            onClicked: AppModel.history.undoLastClean()
        },
        Item {
            Layout.fillWidth: true
        },
        OutlineButton {
            text: qsTr("View history")
            onClicked: {
                AppModel.cleanup.showResult = false;
                AppModel.section = Sections.History;
            }
        },
        SolidButton {
            id: done

            text: qsTr("Done")
            onClicked: AppModel.cleanup.showResult = false
        }
    ]

    RowLayout {
        spacing: Theme.snug
        Layout.fillWidth: true
        Layout.fillHeight: false

        StatCard {
            value: Format.bytes(sheet.report.freedNow)
            label: qsTr("Freed now")
            color: Theme.safe
        }
        StatCard {
            value: Format.bytes(sheet.report.movedToTrash)
            label: qsTr("In Trash")
            color: Theme.info
        }
    }
    Notice {
        text: qsTr("Space is only reclaimed once the Trash is emptied.")
        buttonText: qsTr("Empty Trash now")
        visible: sheet.report.movedToTrash > 0
        enabled: AppModel.busy === ""
        onClicked: AppModel.history.question.askToEmpty()
    }
    ProblemList {
        problems: sheet.report.goneForGood
        title: qsTr("Gone for good: cannot be undone")
        symbol: "shippingbox"
        visible: problems.length > 0
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
    ProblemList {
        problems: sheet.report.problems
        visible: sheet.report.hasProblems
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
}
