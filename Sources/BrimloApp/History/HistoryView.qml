pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

Screen {
    id: screen

    readonly property HistoryRows rows: AppModel.history.rows

    title: qsTr("History")
    toolbar: [
        SortButtons {
            order: screen.rows.order
            keys: ["Date", "Size"]
            visible: screen.rows.count > 1
        }
    ]

    ColumnLayout {
        spacing: Theme.snug
        Layout.fillWidth: true
        Layout.maximumWidth: 1200
        Layout.alignment: Qt.AlignHCenter
        Layout.margins: Theme.wide
        Layout.topMargin: Theme.roomy
        Layout.bottomMargin: Theme.snug

        SectionHeading {
            text: qsTr("Removed by Brimlo")
            Layout.fillWidth: true

            OutlineButton {
                text: qsTr("Remove items Brimlo put in Trash")
                symbol: "trash"
                visible: screen.rows.count > 0
                enabled: AppModel.busy === ""
                onClicked: AppModel.history.question.askToPurge()
            }
        }
        Notice {
            text: qsTr("The journal can't be read: %1. Only the desktop's own Trash can put things back now.").arg(AppModel.history.journalProblem)
            symbol: "exclamationmark.triangle"
            color: Theme.review
            visible: AppModel.history.journalProblem !== ""
        }
        Notice {
            visible: screen.rows.count > 0
            text: AppModel.settings.autoCleanEnabled ? qsTr("Undo restores an item from the Trash if it is still there. Auto-clean removes what Brimlo put there after %1 days.").arg(Format.count(AppModel.settings.trashRetentionDays)) : qsTr("Undo restores an item from the Trash if it is still there.")
        }
    }
    Item {
        visible: screen.rows.count === 0 && AppModel.history.journalProblem === ""
        Layout.fillWidth: true
        Layout.fillHeight: true

        EmptyState {
            anchors.centerIn: parent
            width: parent.width - 2 * Theme.wide
            symbol: "clock.arrow.circlepath"
            title: AppModel.history.isJournalRead ? qsTr("Nothing removed yet.") : qsTr("Reading the journal…")
            line: qsTr("Each clean will appear here, with what went and when. Undo puts a whole clean or a single item back while the Trash holds it.")

            SolidButton {
                text: qsTr("Find cleanable space")
                symbol: "sparkles"
                onClicked: AppModel.section = Sections.Clean
            }
        }
    }
    ScrollList {
        id: list

        label: qsTr("Removed by Brimlo")
        model: screen.rows
        visible: screen.rows.count > 0
        focus: true
        roomBelow: Theme.wide
        onOpened: index => screen.rows.toggleExpanded(index)
        Keys.onSpacePressed: screen.rows.toggleExpanded(currentIndex)
        Keys.onRightPressed: (currentItem as HistoryRow)?.expand(true)
        Keys.onLeftPressed: (currentItem as HistoryRow)?.expand(false)
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.maximumWidth: 1200 + 2 * Theme.snug
        Layout.alignment: Qt.AlignHCenter
        Layout.leftMargin: Theme.snug
        Layout.rightMargin: Theme.snug

        delegate: HistoryRow {
            onToggled: screen.rows.toggleExpanded(index)
            onUndone: screen.rows.undo(index)
        }
    }
}
