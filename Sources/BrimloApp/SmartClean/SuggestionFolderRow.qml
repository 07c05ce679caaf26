import QtQuick
import QtQuick.Layouts
import Brimlo

// Many items of a suggestion that lie in one folder. A click expands or collapses it.
SuggestionRow {
    id: folder

    required property real size
    required property int itemCount
    required property string tick
    required property string path
    required property bool expanded

    readonly property string countText: qsTr("%1 items").arg(Format.count(itemCount))

    signal ticked

    text: path + ", " + Format.bytes(size) + ", " + countText
    spacing: Theme.tight
    Accessible.checkable: true
    Accessible.checked: tick === "all"
    Accessible.checkStateMixed: tick === "some"

    CheckBox {
        checkState: folder.tick === "all" ? Qt.Checked : folder.tick === "some" ? Qt.PartiallyChecked : Qt.Unchecked
        help: qsTr("Select all items in this folder")
        focusPolicy: Qt.NoFocus
        onClicked: folder.ticked()
    }
    PathText {
        path: folder.path
        Layout.fillWidth: true
    }
    Label {
        text: folder.countText
        secondary: true
    }
    SizeText {
        bytes: folder.size
    }
    PlainButton {
        symbol: folder.expanded ? "chevron.down" : "chevron.right"
        help: folder.expanded ? qsTr("Hide the items") : qsTr("Show the items")
        ink: Theme.secondaryText
        focusPolicy: Qt.NoFocus
        onClicked: folder.clicked()
    }
}
