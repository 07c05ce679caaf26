import QtQuick
import QtQuick.Layouts

// The frame of a screen: a title, a line of explanation, a toolbar at the right, and the content in
// a column without margins (use Layout.fillHeight to fill it).
FocusScope {
    id: screen

    property string title
    property string line
    property alias toolbar: controls.data
    default property alias content: column.data
    property alias spacing: column.spacing

    // What the buttons at the bottom take; no message covers it.
    property real footerHeight: 0

    // With large text, the toolbar goes below the title.
    readonly property bool fitsOneLine: words.implicitWidth + controls.implicitWidth + Theme.snug <= width - 2 * Theme.wide

    // The section was selected.
    signal shown

    onVisibleChanged: if (visible)
        shown()
    Component.onCompleted: if (visible)
        shown()
    Accessible.role: Accessible.Pane
    Accessible.name: title

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        GridLayout {
            columns: screen.fitsOneLine ? 2 : 1
            columnSpacing: Theme.snug
            rowSpacing: 0
            Layout.minimumHeight: Theme.controlHeight + 2 * Theme.snug
            Layout.leftMargin: screen.fitsOneLine ? Theme.wide : Theme.normal
            Layout.rightMargin: Layout.leftMargin
            Layout.topMargin: screen.fitsOneLine ? 0 : Theme.tight
            Layout.bottomMargin: screen.fitsOneLine ? 0 : Theme.tight

            RowLayout {
                id: words

                spacing: Theme.snug
                Layout.fillWidth: true
                Layout.minimumHeight: Theme.controlHeight

                Label {
                    text: screen.title
                    font.pixelSize: Theme.headline
                    font.weight: Font.DemiBold
                    Layout.fillWidth: screen.line === ""
                    Accessible.role: Accessible.Heading
                }
                Label {
                    text: screen.line
                    visible: text !== ""
                    secondary: true
                    Layout.fillWidth: true
                    Layout.alignment: Qt.AlignBaseline
                }
            }
            // In two lines where large text leaves no room for one.
            GridLayout {
                id: controls

                readonly property var shown: Array.from(children).filter(child => child.visible)
                readonly property real lineWidth: shown.reduce((sum, child) => sum + Math.max(child.implicitWidth, child.Layout.preferredWidth) + columnSpacing, 0)

                columns: Math.max(1, Math.ceil(shown.length / (lineWidth <= screen.width - 2 * Theme.normal ? 1 : 2)))
                columnSpacing: Theme.tight
                rowSpacing: Theme.tiny
                visible: children.length > 0
                Layout.fillWidth: true
                Layout.maximumWidth: implicitWidth
            }
        }
        Divider {
            Layout.fillWidth: true
        }
        ColumnLayout {
            id: column

            spacing: 0
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
