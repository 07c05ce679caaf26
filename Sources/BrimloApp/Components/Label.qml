import QtQuick

// Plain text, never markup, elided at the right. The Label of Qt's templates has a fixed accessible
// role and can't be a heading.
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
