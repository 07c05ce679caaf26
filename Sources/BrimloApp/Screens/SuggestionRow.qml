import QtQuick
import QtQuick.Layouts
import Brimlo

// A line of the Smart Clean list: a suggestion, its details, one of its items, or how many items
// are not listed.
ListRow {
    id: row

    required property int index
    required property string kind
    required property string name
    required property string risk
    required property string runningApps
    required property real size
    required property int itemCount
    required property string tick
    required property bool expanded
    required property string regenerates
    required property string officialCommand
    required property string path
    required property string subtitle
    required property string detail
    required property int idleDays
    required property bool ticked
    required property bool isDocker

    readonly property var files: ({
            suggestion: "SuggestionHead.qml",
            details: "SuggestionDetails.qml",
            item: "SuggestionItem.qml",
            more: "SuggestionMore.qml"
        })
    readonly property bool isHead: kind === "suggestion"
    readonly property bool isOrphan: subtitle.includes("orphaned")
    readonly property bool canReveal: !isDocker
    readonly property string itemName: subtitle !== "" ? subtitle : path
    readonly property string countText: itemCount === 1 ? qsTr("1 item") : qsTr("%1 items").arg(Format.count(itemCount))
    readonly property string moreText: qsTr("+ %1 more").arg(Format.count(itemCount))

    signal toggled
    signal expansionToggled
    signal revealed

    function words(): string {
        switch (kind) {
        case "suggestion":
            return name + ", " + RiskWords.text(risk) + ", " + Format.bytes(size) + ", " + countText;
        case "item":
            return itemName + ", " + Format.bytes(size);
        case "details":
            return regenerates;
        default:
            return moreText;
        }
    }

    text: words()
    width: (list?.width ?? 0) - (list?.leftMargin ?? 0) - (list?.rightMargin ?? 0)
    leftPadding: isHead ? Theme.tight : Theme.huge + 6
    rightPadding: Theme.tight
    topPadding: isHead ? 7 : 3
    bottomPadding: topPadding
    Accessible.checkable: isHead || kind === "item"
    Accessible.checked: tick === "all"
    Accessible.checkStateMixed: tick === "some"
    onClicked: isHead ? expansionToggled() : toggled()

    // By the file's name, since each of the parts knows the row.
    Loader {
        readonly property string file: row.files[row.kind] ?? ""

        Layout.fillWidth: true
        onFileChanged: setSource(file, {
            row: row
        })
    }
}
