pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The areas that the last scan could not read, and why.
Popover {
    id: popover

    readonly property AreaRows areas: AppModel.analyzer.areas

    label: title.text

    Label {
        id: title

        text: AppModel.analyzer.areas.unreadableCount > 0 ? qsTr("%1 folders could not be read").arg(Format.count(AppModel.analyzer.areas.unreadableCount)) : qsTr("%1 other volumes were left out").arg(Format.count(AppModel.analyzer.areas.leftOutCount))
        font.pixelSize: Theme.title
        font.weight: Font.DemiBold
        Layout.fillWidth: true
        Accessible.role: Accessible.Heading
    }
    Label {
        text: AppModel.analyzer.areas.unreadableCount === 0 ? qsTr("Their size is not in the total.") : Desktop.hasPrivacyPage ? qsTr("Their size is not in the total. macOS hides these from apps that do not have Full Disk Access.") : qsTr("Their size is not in the total. They belong to the system or to other users.")
        secondary: true
        wrapMode: Text.Wrap
        lineHeight: 1.15
        Layout.fillWidth: true
        Layout.preferredWidth: 400
    }
    Divider {
        Layout.fillWidth: true
    }
    Repeater {
        model: popover.areas

        UnreadableRow {
            Layout.fillWidth: true
        }
    }
    Label {
        text: qsTr("%1 more areas").arg(Format.count(popover.areas.moreCount))
        secondary: true
        visible: popover.areas.moreCount > 0
    }
    Divider {
        visible: Desktop.hasPrivacyPage
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: Theme.tight
        visible: Desktop.hasPrivacyPage

        Icon {
            symbol: AppModel.machine.hasFullDiskAccess ? "checkmark.shield" : "lock.shield"
            color: Theme.secondaryText
        }
        Label {
            text: AppModel.machine.hasFullDiskAccess ? qsTr("Full Disk Access is on.") : qsTr("Full Disk Access is off.")
            secondary: true
            Layout.fillWidth: true
        }
        OutlineButton {
            text: qsTr("Open System Settings")
            visible: !AppModel.machine.hasFullDiskAccess
            onClicked: AppModel.machine.openPrivacySettings()
        }
    }
}
