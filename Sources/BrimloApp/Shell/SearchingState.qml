import QtQuick
import QtQuick.Layouts
import Brimlo

// A running search: what it does, where, and how to stop it.
ColumnLayout {
    id: state

    property string title
    property string path
    property string line
    default property alias actions: buttons.data

    spacing: Theme.tight

    Spinner {
        size: 40
        Layout.alignment: Qt.AlignHCenter
        Layout.bottomMargin: Theme.snug
    }
    Label {
        text: state.title
        font.pixelSize: Theme.headline
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
        Accessible.role: Accessible.Heading
    }
    PathText {
        path: state.path
        secondary: true
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
    }
    Label {
        text: state.line
        visible: text !== ""
        secondary: true
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
    }
    RowLayout {
        id: buttons

        visible: children.length > 0
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: Theme.snug
    }
}
