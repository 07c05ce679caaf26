import QtQuick

// The small caption above a section.
Label {
    secondary: true
    font.pixelSize: Theme.caption
    font.weight: Font.DemiBold
    font.letterSpacing: 0.4
    font.capitalization: Font.AllUppercase
    Accessible.role: Accessible.Heading
}
