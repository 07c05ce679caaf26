import QtQuick
import QtQuick.Layouts
import Brimlo

// The line of one item of a suggestion.
RowLayout {
    id: item

    required property SuggestionRow row

    spacing: Theme.tight

    CheckBox {
        checkState: item.row.ticked ? Qt.Checked : Qt.Unchecked
        label: item.row.itemName
        focusPolicy: Qt.NoFocus
        onClicked: item.row.toggled()
    }
    PathText {
        path: item.row.itemName
        color: item.row.isOrphan ? Theme.rebuildText : Theme.text
        Layout.fillWidth: true
    }
    Label {
        text: item.row.detail
        secondary: true
        visible: text !== ""
        Layout.maximumWidth: 180
    }
    Label {
        text: qsTr("idle %1").arg(Format.days(item.row.idleDays))
        secondary: true
        visible: item.row.idleDays >= 0
    }
    SizeText {
        bytes: item.row.size
    }
    PlainButton {
        symbol: "magnifyingglass"
        help: qsTr("Reveal in %1").arg(SystemWords.fileManager)
        ink: Theme.secondaryText
        enabled: item.row.canReveal
        opacity: item.row.canReveal ? 1 : 0
        focusPolicy: Qt.NoFocus
        Accessible.ignored: !item.row.canReveal
        onClicked: item.row.revealed()
    }
}
