import QtQuick
import QtQuick.Layouts

// The title of a section, a line of explanation, and controls at the right.
RowLayout {
    id: heading

    property string text
    property string line
    default property alias trailing: controls.data

    spacing: Theme.snug

    ColumnLayout {
        spacing: 3
        Layout.fillWidth: true

        Label {
            text: heading.text
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Layout.fillWidth: true
        }
        Label {
            text: heading.line
            visible: text !== ""
            secondary: true
            wrapMode: Text.Wrap
            lineHeight: 1.15
            Layout.fillWidth: true
        }
    }
    RowLayout {
        id: controls

        spacing: Theme.tight
        Layout.alignment: Qt.AlignVCenter
    }
}
