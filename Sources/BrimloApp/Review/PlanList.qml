import QtQuick
import Brimlo

// The items of a plan under headings that tell what becomes of them. Its components are not bound:
// a list of Qt 6.4 can't create a bound heading.
ScrollList {
    id: list

    required property PlanReview review

    // Whether items can be unticked.
    property bool tickable: true

    function heading(fate) {
        if (fate === "trash")
            return qsTr("Goes to Trash · %1").arg(Format.bytes(review.trashBytes));
        if (fate === "forGood")
            return qsTr("Goes for good · %1").arg(Format.bytes(review.freedNow));
        return review.stayingCount === 1 ? qsTr("Would be refused and stays · 1 item") : qsTr("Would be refused and stays · %1 items").arg(Format.count(review.stayingCount));
    }
    function toggle(index) {
        if (tickable)
            review.toggle(index);
    }

    label: qsTr("Items")
    model: review
    onOpened: index => review.toggleExpanded(index)
    Keys.onSpacePressed: toggle(currentIndex)
    // Also shows the heading above the first row.
    onCurrentIndexChanged: if (currentIndex === 0)
        positionViewAtBeginning()
    // qmllint disable
    delegate: DisposeRow {
        required property int index

        tickable: list.tickable
        fateWidth: Theme.scaled(list.review.hasFinalItems ? 148 : 68)
        onClicked: itemCount > 0 ? list.review.toggleExpanded(index) : list.toggle(index)
        onTicked: list.toggle(index)
    }
    section.property: "fate"
    section.delegate: Eyebrow {
        required property string section

        text: list.heading(section)
        leftPadding: Theme.snug
        topPadding: Theme.tight
        bottomPadding: Theme.tiny
    }
    // qmllint enable
}
