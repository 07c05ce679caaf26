import QtQuick
import QtQuick.Layouts
import Brimlo

// One item of a suggestion. A click toggles it.
SuggestionRow {
    id: item

    required property real size
    required property string frees
    required property string tick
    required property string path
    required property string subtitle
    required property string detail
    required property int idleDays
    required property bool isDocker
    required property bool isInFolder

    readonly property string name: isDocker && detail !== "" ? detail : subtitle !== "" ? subtitle : isInFolder ? path.substring(path.lastIndexOf("/") + 1) : path

    signal revealed

    text: name + ", " + Format.bytes(size) + (frees === "" ? "" : ", " + frees)
    spacing: Theme.tight
    leftPadding: isInFolder ? Theme.huge * 2 + 6 : Theme.huge + 6
    Accessible.checkable: true
    Accessible.checked: tick === "all"

    CheckBox {
        checkState: item.tick === "all" ? Qt.Checked : Qt.Unchecked
        label: item.name
        focusPolicy: Qt.NoFocus
        onClicked: item.clicked()
    }
    PathText {
        path: item.name
        color: item.subtitle.includes("orphaned") ? Theme.rebuildText : Theme.text
        Layout.fillWidth: true
    }
    Label {
        text: item.name === item.detail ? item.subtitle : item.detail
        secondary: true
        visible: text !== ""
        Layout.maximumWidth: 180
    }
    Label {
        text: qsTr("idle %1").arg(Format.days(item.idleDays))
        secondary: true
        visible: item.idleDays >= 0
    }
    Label {
        text: item.frees
        secondary: true
        visible: text !== ""
    }
    SizeText {
        bytes: item.size
    }
    PlainButton {
        symbol: "magnifyingglass"
        help: qsTr("Reveal in %1").arg(Desktop.fileManager)
        ink: Theme.secondaryText
        enabled: !item.isDocker
        opacity: item.isDocker ? 0 : 1
        focusPolicy: Qt.NoFocus
        Accessible.ignored: item.isDocker
        onClicked: item.revealed()
    }
}
