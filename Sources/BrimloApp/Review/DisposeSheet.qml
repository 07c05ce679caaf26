pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The last look at a plan before a clean. `review` holds the plan and carries out exactly what is
// ticked in it; with `dryRunOnly` there is nothing to tick or to confirm. What is ticked changes
// words, and never what is where.
Sheet {
    id: sheet

    required property PlanReview review
    property bool dryRunOnly: false

    presented: review.isOpen
    onDismissed: review.close()

    // Kept, because the plan is emptied when the review closes, and the fading sheet would show
    // that.
    exit: null
    preferredWidth: 720
    symbol: "checkmark.shield"
    symbolColor: Theme.safe
    title: dryRunOnly ? qsTr("Preview: nothing will change") : qsTr("Review before cleaning")
    subtitle: qsTr("%1 items · %2").arg(Format.count(review.itemCount)).arg(review.amount)
    defaultButton: dryRunOnly || review.itemCount === 0 ? closeButton : cleanButton
    footer: [
        Label {
            text: sheet.dryRunOnly ? qsTr("This is a preview. Use Clean to apply.") : ""
            secondary: true
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        },
        OutlineButton {
            id: closeButton

            text: sheet.dryRunOnly ? qsTr("Close") : qsTr("Cancel")
            onClicked: sheet.review.close()
        },
        SolidButton {
            id: cleanButton

            text: qsTr("Clean %1").arg(sheet.review.amount)
            symbol: "sparkles"
            visible: !sheet.dryRunOnly
            enabled: !AppModel.cleanup.isCleaning && sheet.review.itemCount > 0
            onClicked: sheet.review.confirm()
        }
    ]

    ModeCards {
        visible: sheet.review.hasTrashItems
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: Theme.snug
        Layout.fillHeight: false

        StatCard {
            value: Format.bytes(sheet.review.freedNow)
            label: qsTr("Freed immediately")
            color: Theme.safe
        }
        StatCard {
            value: Format.bytes(sheet.review.freedAfterEmptying)
            label: qsTr("Freed after emptying Trash")
            color: Theme.info
        }
    }
    Notice {
        text: sheet.review.warning !== "" ? sheet.review.warning : qsTr("Nothing goes for good.")
        color: Theme.review
        visible: sheet.review.hasFinalItems
    }
    Notice {
        text: qsTr("Some items may contain your own files. They stay in Trash and can be put back.")
        color: Theme.rebuild
        visible: sheet.review.hasReviewItems
    }
    Rectangle {
        color: Theme.faded(Theme.text, 0)
        radius: Theme.radius
        border.width: 1
        border.color: Theme.border
        implicitHeight: Math.max(Theme.rowHeight * 2, list.contentHeight + 10)
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: Theme.rowHeight * 2
        Layout.maximumHeight: Math.min(implicitHeight, 320)

        PlanList {
            id: list

            review: sheet.review
            tickable: !sheet.dryRunOnly
            anchors.fill: parent
            anchors.margins: 5
        }
    }
}
