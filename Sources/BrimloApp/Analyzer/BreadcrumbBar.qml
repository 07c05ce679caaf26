pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The path from the scanned folder to the current one, and the current folder's figures at the
// right. A path that is too long shows its end.
Item {
    id: bar

    required property CrumbRows crumbs

    function reveal(item) {
        way.contentX = Math.max(0, Math.min(item.x, Math.max(way.contentX, item.x + item.width - way.width)));
    }

    implicitHeight: Theme.controlHeight + Theme.snug

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.wide - 7
        anchors.rightMargin: Theme.wide
        spacing: Theme.snug

        Flickable {
            id: way

            contentWidth: line.width
            contentHeight: height
            boundsBehavior: Flickable.StopAtBounds
            flickableDirection: Flickable.HorizontalFlick
            interactive: contentWidth > width
            clip: interactive
            Layout.fillWidth: true
            Layout.fillHeight: true
            onContentWidthChanged: contentX = Math.max(0, contentWidth - width)
            onWidthChanged: contentX = Math.max(0, contentWidth - width)

            Row {
                id: line

                height: way.height
                spacing: 2

                Repeater {
                    model: bar.crumbs

                    Crumb {
                        isLast: index === bar.crumbs.count - 1
                        anchors.verticalCenter: parent?.verticalCenter
                        onChosen: bar.crumbs.show(index)
                        onFocused: bar.reveal(this)
                    }
                }
            }
        }
        Label {
            text: qsTr("%1 · %2 files").arg(Format.bytes(bar.crumbs.size)).arg(Format.count(bar.crumbs.fileCount))
            secondary: true
        }
        PlainButton {
            id: unreadable

            text: AppModel.analyzer.areas.unreadableCount > 0 ? qsTr("%1 unreadable").arg(Format.count(AppModel.analyzer.areas.unreadableCount)) : qsTr("%1 left out").arg(Format.count(AppModel.analyzer.areas.leftOutCount))
            symbol: "exclamationmark.triangle"
            help: popover.presented ? "" : qsTr("Click to see which folders and why")
            ink: Theme.rebuildText
            visible: AppModel.analyzer.areas.unreadableCount + AppModel.analyzer.areas.leftOutCount > 0
            checked: popover.presented
            onClicked: popover.presented = !popover.presented

            UnreadablePopover {
                id: popover

                parent: unreadable
                onDismissed: presented = false
            }
        }
    }

    // One folder of the path, after a separator.
    component Crumb: Row {
        id: crumb

        required property int index
        required property string name
        property bool isLast: false

        signal chosen
        signal focused

        spacing: 2

        Icon {
            symbol: "chevron.right"
            visible: crumb.index > 0
            size: 12
            color: Theme.secondaryText
            anchors.verticalCenter: parent.verticalCenter
        }
        PlainButton {
            text: Format.oneLine(crumb.name)
            width: Math.min(implicitWidth, 220)
            font.weight: crumb.isLast ? Font.DemiBold : Font.Normal
            ink: crumb.isLast ? Theme.text : Theme.secondaryText
            onClicked: crumb.chosen()
            onActiveFocusChanged: if (activeFocus)
                crumb.focused()
        }
    }
}
