import QtQuick
import QtQuick.Layouts

// A placeholder for missing content: a symbol, a title, a line, and actions.
ColumnLayout {
    id: empty

    property string symbol
    property string title
    property string line
    default property alias actions: buttons.data

    spacing: Theme.tight

    Rectangle {
        implicitWidth: 68
        implicitHeight: 68
        radius: 34
        color: Theme.subtle
        visible: empty.symbol !== ""
        Layout.alignment: Qt.AlignHCenter
        Layout.bottomMargin: Theme.tight

        Icon {
            anchors.centerIn: parent
            symbol: empty.symbol
            size: 32
            side: size
            color: Theme.secondaryText
        }
    }
    Label {
        text: empty.title
        font.pixelSize: Theme.headline
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Layout.fillWidth: true
        Accessible.role: Accessible.Heading
    }
    Label {
        text: empty.line
        visible: text !== ""
        secondary: true
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        lineHeight: 1.2
        Layout.fillWidth: true
        Layout.maximumWidth: 520
        Layout.alignment: Qt.AlignHCenter
    }
    RowLayout {
        id: buttons

        visible: children.length > 0
        spacing: Theme.tight
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: Theme.tight
    }
}
