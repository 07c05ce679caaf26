import QtQuick
import QtQuick.Templates as T

// The background of secondary buttons and of pickers.
Rectangle {
    id: ground

    property T.Button button: null
    property bool hovered: button !== null && button.hovered && button.enabled
    property bool focused: button !== null && button.visualFocus

    radius: Theme.radius
    color: hovered ? Theme.mixed(Theme.card, Theme.text, 0.05) : Theme.card
    border.width: 1
    border.color: Theme.fieldBorder

    FocusRing {
        shown: ground.focused
    }
}
