import QtQuick

// Words as they stand: never read as markup, elided at the right. The label of the templates would
// tell no role but its own, so that no heading could be found as one.
Text {
    property bool secondary: false

    color: !enabled ? Theme.disabledText : secondary ? Theme.secondaryText : Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.body
    textFormat: Text.PlainText
    elide: wrapMode === Text.NoWrap ? Text.ElideRight : Text.ElideNone
    linkColor: Theme.accentText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
