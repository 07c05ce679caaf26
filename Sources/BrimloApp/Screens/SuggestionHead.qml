import QtQuick
import QtQuick.Layouts
import Brimlo

// The line of a suggestion.
RowLayout {
    id: head

    required property SuggestionRow row

    spacing: Theme.snug

    CheckBox {
        checkState: head.row.tick === "all" ? Qt.Checked : head.row.tick === "some" ? Qt.PartiallyChecked : Qt.Unchecked
        help: qsTr("Select all items in this group")
        focusPolicy: Qt.NoFocus
        onClicked: head.row.toggled()
    }
    Item {
        implicitWidth: Math.max(badge.implicitWidth, Theme.scaled(82))
        implicitHeight: badge.implicitHeight

        RiskBadge {
            id: badge

            risk: head.row.risk
        }
    }
    ColumnLayout {
        spacing: 1
        Layout.fillWidth: true

        Label {
            text: head.row.name
            font.weight: Font.DemiBold
            Layout.fillWidth: true
        }
        Label {
            text: RiskWords.line(head.row.risk)
            secondary: true
            wrapMode: Text.Wrap
            font.pixelSize: Theme.small
            Layout.fillWidth: true
        }
    }
    Chip {
        text: qsTr("Close %1 first").arg(head.row.runningApps)
        symbol: "exclamationmark.triangle"
        color: Theme.rebuild
        visible: head.row.runningApps !== ""
        Layout.maximumWidth: 260
    }
    SizeText {
        bytes: head.row.size
        font.weight: Font.DemiBold
    }
    Label {
        text: head.row.countText
        secondary: true
        horizontalAlignment: Text.AlignRight
        Layout.minimumWidth: Theme.scaled(74)
    }
    PlainButton {
        symbol: "chevron.right"
        help: head.row.expanded ? qsTr("Hide the items") : qsTr("Show the items")
        ink: Theme.secondaryText
        focusPolicy: Qt.NoFocus
        rotation: head.row.expanded ? 90 : 0
        onClicked: head.row.expansionToggled()

        Behavior on rotation {
            NumberAnimation {
                duration: Theme.duration
                easing.type: Easing.OutQuad
            }
        }
    }
}
