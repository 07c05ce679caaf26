import QtQuick
import QtQuick.Layouts
import Brimlo

// Asks before anything is deleted from the Trash for good.
Sheet {
    id: sheet

    readonly property TrashQuestion question: AppModel.history.question
    readonly property string what: question.count === 1 ? qsTr("1 item") : qsTr("%1 items").arg(Format.count(question.count))

    title: question.isAboutAll ? qsTr("Empty the Trash?") : qsTr("Delete Brimlo's items for good?")
    subtitle: question.isMeasured ? qsTr("%1 · %2").arg(what).arg(Format.bytes(question.bytes)) + (question.frees === "" ? "" : ", " + question.frees) : qsTr("Measuring…")
    symbol: "trash"
    symbolColor: Theme.review
    preferredWidth: 560
    presented: question.isOpen
    onDismissed: question.answer(false)
    defaultButton: cancel
    footer: [
        Item {
            Layout.fillWidth: true
        },
        OutlineButton {
            id: cancel

            text: qsTr("Cancel")
            onClicked: sheet.question.answer(false)
        },
        SolidButton {
            text: qsTr("Delete for good")
            symbol: "trash"
            enabled: sheet.question.isMeasured && sheet.question.count > 0 && AppModel.busy === ""
            onClicked: sheet.question.answer(true)
        }
    ]

    Label {
        text: sheet.question.isMeasured && sheet.question.count === 0 ? qsTr("There is nothing to delete.") : sheet.question.isAboutAll ? qsTr("This deletes everything in the Trash, not only Brimlo's. None of it can be put back.") : qsTr("This deletes what Brimlo moved to the Trash. None of it can be put back. What other programs put in the Trash stays.")
        wrapMode: Text.Wrap
        lineHeight: 1.2
        Layout.fillWidth: true
    }
}
