import QtQuick
import Brimlo

// A share of a whole as a bar and in percent, for a column of rows.
ShareBar {
    readonly property string text: Format.percent(share)

    barWidth: Theme.scaled(64)
    color: Theme.info
    groove: Theme.subtle
    ink: Theme.secondaryText
    font.family: Theme.family
    font.pixelSize: Theme.small
    // Wide enough for "100%".
    implicitWidth: barWidth + Math.ceil(3.2 * Theme.small) + Theme.tight
    implicitHeight: Math.ceil(1.4 * Theme.small)
}
