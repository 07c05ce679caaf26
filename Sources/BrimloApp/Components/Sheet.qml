import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A modal dialog in the middle of the window: a heading, a column of content, a row of buttons.
// Visible while `presented`; Escape emits `dismissed`. Keeps the focus inside.
T.Popup {
    id: sheet

    default property alias content: column.data
    property alias footer: buttons.data
    property bool presented: false
    property string title
    property string subtitle
    property string symbol
    property color symbolColor: Theme.accentText
    property int preferredWidth: 600

    // The button that Return presses, unless a button, a list or a text field has focus.
    property ButtonBase defaultButton: null

    // The item that had focus before the sheet opened.
    property Item before: null

    signal dismissed

    // If a list row had focus and no longer exists, its list gets the focus.
    function giveBack() {
        let heir = before;
        while (heir && !(heir.visible && heir.activeFocusOnTab))
            heir = heir.parent;
        heir?.forceActiveFocus(Qt.PopupFocusReason);
        before = null;
    }

    function answer(event) {
        event.accepted = defaultButton !== null && defaultButton.enabled;
        if (event.accepted)
            defaultButton.clicked();
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    implicitWidth: Math.min(Theme.scaled(preferredWidth), (parent?.width ?? 10000) - 2 * Theme.wide)
    implicitHeight: Math.min(frame.implicitHeight + topPadding + bottomPadding, (parent?.height ?? 10000) - 2 * Theme.wide)
    padding: Theme.wide
    spacing: Theme.normal
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    onPresentedChanged: presented ? open() : close()
    onAboutToShow: before = parent.Window.activeFocusItem
    onClosed: {
        giveBack();
        if (presented)
            dismissed();
    }
    Component.onCompleted: if (presented)
        open()
    onOpened: {
        if (defaultButton !== null)
            defaultButton.forceActiveFocus();
        else
            frame.forceActiveFocus();
    }

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }
    contentItem: FocusScope {
        id: frame

        focus: true
        implicitWidth: layout.implicitWidth
        implicitHeight: layout.implicitHeight
        Keys.onReturnPressed: event => sheet.answer(event)
        Keys.onEnterPressed: event => sheet.answer(event)

        // To screen readers, the popup's own item is the dialog.
        Binding {
            target: frame.parent?.Accessible ?? null
            property: "name"
            value: sheet.title
        }
        Binding {
            target: frame.parent?.Accessible ?? null
            property: "description"
            value: sheet.subtitle
        }
        ColumnLayout {
            id: layout

            anchors.fill: parent
            spacing: Theme.roomy

            RowLayout {
                spacing: Theme.snug
                visible: sheet.title !== ""

                Icon {
                    symbol: sheet.symbol
                    visible: symbol !== ""
                    size: 30
                    color: sheet.symbolColor
                }
                ColumnLayout {
                    spacing: 2
                    Layout.fillWidth: true

                    Label {
                        text: sheet.title
                        font.pixelSize: Theme.headline
                        font.weight: Font.DemiBold
                        wrapMode: Text.Wrap
                        Layout.fillWidth: true
                        Accessible.role: Accessible.Heading
                    }
                    Label {
                        text: sheet.subtitle
                        visible: text !== ""
                        secondary: true
                        wrapMode: Text.Wrap
                        Layout.fillWidth: true
                    }
                }
            }
            // Scrolls where a list in it can shrink no further.
            ScrollArea {
                id: area

                // Without what its lists can give up.
                property real leastHeight: 0

                function measure() {
                    const parts = Array.from(column.children).filter(part => part.visible);
                    leastHeight = parts.reduce((sum, part) => sum + column.spacing + (part.Layout.fillHeight ? Math.max(0, part.Layout.minimumHeight) : part.implicitHeight), -column.spacing);
                }

                clip: contentHeight > height
                contentHeight: Math.max(height, leastHeight)
                implicitWidth: column.implicitWidth
                implicitHeight: column.implicitHeight
                Layout.fillWidth: true
                Layout.fillHeight: true

                ColumnLayout {
                    id: column

                    spacing: sheet.spacing
                    width: area.width
                    height: area.contentHeight
                    onImplicitHeightChanged: area.measure()
                }
            }
            RowLayout {
                id: buttons

                spacing: Theme.tight
                visible: children.length > 0
                Layout.fillWidth: true
            }
        }
    }
    background: PopupGround {
        radius: 14
        depth: 16
    }
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.quick
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: Theme.quick
        }
    }
}
