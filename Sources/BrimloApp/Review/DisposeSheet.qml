pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The last look at a plan before a clean. `review` holds the plan and carries out exactly that;
// with `dryRunOnly` there is nothing to confirm.
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
    subtitle: qsTr("%1 items · %2").arg(Format.count(review.itemCount)).arg(Format.bytes(review.totalBytes))
    defaultButton: dryRunOnly ? closeButton : cleanButton
    footer: [
        Label {
            text: sheet.dryRunOnly ? qsTr("This is a preview. Use Clean to apply.") : ""
            secondary: true
            Layout.fillWidth: true
        },
        OutlineButton {
            id: closeButton

            text: sheet.dryRunOnly ? qsTr("Close") : qsTr("Cancel")
            onClicked: sheet.review.close()
        },
        SolidButton {
            id: cleanButton

            text: qsTr("Clean %1").arg(Format.bytes(sheet.review.totalBytes))
            symbol: "sparkles"
            visible: !sheet.dryRunOnly
            enabled: !AppModel.cleanup.isCleaning && sheet.review.itemCount > 0
            onClicked: sheet.review.confirm()
        }
    ]

    ModeCards {
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: Theme.snug

        StatCard {
            value: Format.bytes(sheet.review.freedNow)
            label: qsTr("Freed immediately")
            Layout.minimumWidth: 0
            color: Theme.safe
        }
        StatCard {
            value: Format.bytes(sheet.review.freedAfterEmptying)
            label: qsTr("Freed after emptying Trash")
            Layout.minimumWidth: 0
            color: Theme.info
        }
    }
    Notice {
        text: qsTr("What Docker holds goes for good and cannot be put back.")
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

        ScrollList {
            id: list

            anchors.fill: parent
            anchors.margins: 5
            label: qsTr("Items")
            model: sheet.review
            onOpened: index => sheet.review.toggleExpanded(index)
            delegate: DisposeRow {
                required property int index

                onClicked: sheet.review.toggleExpanded(index)
            }
        }
    }
}
