import QtQuick
import QtQuick.Layouts
import Brimlo

// The header of a suggestion. A click expands or collapses it.
SuggestionRow {
    id: head

    required property string name
    required property string risk
    required property string runningApps
    required property real size
    required property string frees
    required property int itemCount
    required property string tick
    required property bool expanded

    readonly property string countText: itemCount === 1 ? qsTr("1 item") : qsTr("%1 items").arg(Format.count(itemCount))

    signal ticked

    text: name + ", " + Format.risk(risk) + ", " + Format.bytes(size) + (frees === "" ? "" : ", " + frees) + ", " + countText
    leftPadding: Theme.tight
    topPadding: 7
    Accessible.checkable: true
    Accessible.checked: tick === "all"
    Accessible.checkStateMixed: tick === "some"

    CheckBox {
        checkState: head.tick === "all" ? Qt.Checked : head.tick === "some" ? Qt.PartiallyChecked : Qt.Unchecked
        help: qsTr("Select all items in this group")
        focusPolicy: Qt.NoFocus
        onClicked: head.ticked()
    }
    Item {
        implicitWidth: Math.max(badge.implicitWidth, Theme.scaled(82))
        implicitHeight: badge.implicitHeight

        RiskBadge {
            id: badge

            risk: head.risk
        }
    }
    ColumnLayout {
        spacing: 1
        Layout.fillWidth: true

        Label {
            text: head.name
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        Label {
            text: RiskWords.line(head.risk)
            secondary: true
            wrapMode: Text.Wrap
            font.pixelSize: Theme.small
            Layout.fillWidth: true
        }
    }
    Chip {
        text: qsTr("Close %1 first").arg(head.runningApps)
        symbol: "exclamationmark.triangle"
        color: Theme.rebuild
        visible: head.runningApps !== ""
        Layout.maximumWidth: 260
    }
    Label {
        text: head.frees
        secondary: true
        visible: text !== ""
    }
    SizeText {
        bytes: head.size
        font.weight: Font.DemiBold
    }
    Label {
        text: head.countText
        secondary: true
        horizontalAlignment: Text.AlignRight
        Layout.minimumWidth: Theme.scaled(74)
    }
    PlainButton {
        symbol: "chevron.right"
        help: head.expanded ? qsTr("Hide the items") : qsTr("Show the items")
        ink: Theme.secondaryText
        focusPolicy: Qt.NoFocus
        rotation: head.expanded ? 90 : 0
        onClicked: head.clicked()

        Behavior on rotation {
            NumberAnimation {
                duration: Theme.duration
                easing.type: Easing.OutQuad
            }
        }
    }
}
