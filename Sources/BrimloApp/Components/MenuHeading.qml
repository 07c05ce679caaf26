import QtQuick
import QtQuick.Templates as T

// The name of the entries below it.
T.MenuItem {
    id: heading

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.rowHeight - 6
    leftPadding: 9
    rightPadding: 9
    enabled: false
    Accessible.role: Accessible.Heading
    Accessible.name: text

    contentItem: Eyebrow {
        text: heading.text
        color: Theme.secondaryText
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
