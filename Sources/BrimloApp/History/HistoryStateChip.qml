import QtQuick
import Brimlo

// What has become of an item: "restored", "gone", "inTrash" or "removed".
Chip {
    property string entryState
    readonly property var looks: ({
            restored: {
                text: qsTr("Restored"),
                symbol: "arrow.uturn.backward",
                color: Theme.safe
            },
            gone: {
                text: qsTr("Gone"),
                symbol: "xmark.bin",
                color: Theme.secondaryText
            },
            inTrash: {
                text: qsTr("In Trash · can Put Back"),
                symbol: "trash",
                color: Theme.info
            },
            removed: {
                text: qsTr("Removed for good"),
                symbol: "xmark.bin",
                color: Theme.review
            }
        })
    readonly property var look: looks[entryState] ?? null

    text: look?.text ?? ""
    symbol: look?.symbol ?? ""
    color: look?.color ?? Theme.secondaryText
}
