pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// Why the disk is full: lines that add up to what is taken, the largest first.
Sheet {
    id: sheet

    readonly property DiskAccount account: AppModel.diskAccount

    title: qsTr("Why is it full?")
    subtitle: qsTr("All that is taken on the disk of your home folder. Nothing is changed.")
    symbol: "internaldrive"
    preferredWidth: 680
    presented: account.isOpen
    onDismissed: account.isOpen = false
    defaultButton: done
    footer: [
        Item {
            Layout.fillWidth: true
        },
        SolidButton {
            id: done

            text: sheet.account.isCounting ? qsTr("Stop") : qsTr("Done")
            onClicked: sheet.account.isOpen = false
        }
    ]

    RowLayout {
        spacing: Theme.tight
        visible: sheet.account.isCounting

        Spinner {}
        Label {
            text: qsTr("Counting… %1 files").arg(Format.count(sheet.account.countedFiles))
            secondary: true
        }
    }
    Label {
        text: qsTr("The disk could not be looked at.")
        visible: !sheet.account.isCounting && list.count === 0
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
    ScrollList {
        id: list

        label: sheet.title
        model: sheet.account.lines
        visible: count > 0
        implicitHeight: contentHeight
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: Math.min(contentHeight, 160)

        delegate: ListRow {
            id: row

            required property int index
            required property var modelData

            text: modelData.name + ", " + modelData.size
            onClicked: {
                list.currentIndex = index;
                list.forceActiveFocus(Qt.MouseFocusReason);
            }

            PathText {
                path: row.modelData.name
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            Label {
                text: qsTr("%1 file(s)").arg(Format.count(row.modelData.files))
                visible: row.modelData.files > 0 && row.width > Theme.scaled(520)
                secondary: true
                font.pixelSize: Theme.small
                Accessible.ignored: true
            }
            SizeBar {
                share: row.modelData.share
            }
            Label {
                text: row.modelData.size
                font.weight: Font.Medium
                horizontalAlignment: Text.AlignRight
                Layout.preferredWidth: Theme.scaled(84)
                Accessible.ignored: true
            }
        }
    }
    Repeater {
        model: sheet.account.remarks

        Label {
            required property string modelData

            text: modelData
            secondary: true
            font.pixelSize: Theme.small
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
