import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A panel beside the control that opened it. Visible while `presented`; Escape or a click outside
// emits `dismissed`.
T.Popup {
    id: popover

    default property alias content: column.data
    property bool presented: false
    property string label

    // The item that had focus before the popover opened, and gets it back.
    property Item before: null

    signal dismissed

    parent: null
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height + 8 : 0
    margins: 12
    padding: Theme.normal
    spacing: Theme.snug
    implicitWidth: column.implicitWidth + leftPadding + rightPadding
    implicitHeight: Math.min(column.implicitHeight + topPadding + bottomPadding, frame.Window.height - 2 * margins)
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onPresentedChanged: presented ? open() : close()
    onAboutToShow: before = frame.Window.activeFocusItem
    onAboutToHide: before?.forceActiveFocus(Qt.PopupFocusReason)
    onClosed: if (presented)
        dismissed()
    Component.onCompleted: if (presented)
        open()

    contentItem: FocusScope {
        id: frame

        focus: true
        implicitWidth: column.implicitWidth
        implicitHeight: column.implicitHeight

        Binding {
            target: frame.parent?.Accessible ?? null
            property: "name"
            value: popover.label
        }
        ScrollArea {
            anchors.fill: parent
            clip: contentHeight > height
            contentHeight: column.implicitHeight

            ColumnLayout {
                id: column

                spacing: popover.spacing
                width: parent.width
            }
        }
    }
    background: PopupGround {}
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.quick
        }
    }
}
