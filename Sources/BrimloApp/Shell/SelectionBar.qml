import QtQuick
import QtQuick.Layouts
import Brimlo

// The number and size of the selected rows of a list, what they free where the list knows it, and the
// actions on them. Slides in and out, unless it `stays` where its coming would resize what is selected.
Item {
    id: bar

    required property var rows
    property bool stays: false
    readonly property bool presented: stays || rows.selectedCount > 0

    implicitHeight: presented ? row.implicitHeight + 2 * Theme.snug + 1 : 0
    opacity: presented ? 1 : 0
    visible: opacity > 0
    enabled: rows.selectedCount > 0
    clip: true

    Divider {
        width: parent.width
    }
    RowLayout {
        id: row

        spacing: Theme.tight
        height: implicitHeight
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.topMargin: Theme.snug + 1
        anchors.leftMargin: Theme.wide
        anchors.rightMargin: Theme.wide

        Label {
            text: bar.enabled ? qsTr("%1 selected").arg(Format.count(bar.rows.selectedCount)) : qsTr("Nothing selected")
            secondary: !bar.enabled
            font.weight: Font.DemiBold
        }
        Label {
            text: bar.enabled ? Format.bytes(bar.rows.selectedSize) + (bar.rows.selectedFrees ? ", " + bar.rows.selectedFrees : "") : ""
            secondary: true
            Layout.fillWidth: true
        }
        OutlineButton {
            text: qsTr("Reveal")
            help: qsTr("Reveal in %1").arg(Desktop.fileManager)
            onClicked: bar.rows.revealSelected()
        }
        SolidButton {
            text: qsTr("Review & Clean…")
            symbol: "sparkles"
            onClicked: bar.rows.reviewSelected()
        }
    }
    Behavior on implicitHeight {
        NumberAnimation {
            duration: Theme.duration
            easing.type: Easing.OutQuad
        }
    }
    Behavior on opacity {
        NumberAnimation {
            duration: Theme.duration
            easing.type: Easing.OutQuad
        }
    }
}
