import QtQuick
import QtQuick.Layouts
import Brimlo

// A titled card of settings.
ColumnLayout {
    id: section

    property string title
    default property alias content: card.content

    spacing: Theme.tight
    Layout.fillWidth: true

    Label {
        text: section.title
        font.pixelSize: Theme.title
        font.weight: Font.DemiBold
        Layout.fillWidth: true
        Layout.leftMargin: 2
        Accessible.role: Accessible.Heading
    }
    Card {
        id: card

        Layout.fillWidth: true
    }
}
