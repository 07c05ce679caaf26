import QtQuick
import QtQuick.Templates as T

// Words as they stand: never read as markup, elided at the right.
T.Label {
    property bool secondary: false

    color: !enabled ? Theme.disabledText : secondary ? Theme.secondaryText : Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.body
    textFormat: Text.PlainText
    elide: wrapMode === Text.NoWrap ? Text.ElideRight : Text.ElideNone
    linkColor: Theme.accentText
    Accessible.name: text
}
