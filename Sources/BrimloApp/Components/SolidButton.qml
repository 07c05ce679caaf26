import QtQuick

// The primary action of a place.
ButtonBase {
    id: button

    ink: Theme.inkOnAccent
    background: Rectangle {
        radius: Theme.radius
        color: button.hovered && button.enabled ? Theme.mixed(Theme.accent, Theme.text, 0.12) : Theme.accent

        FocusRing {
            shown: button.visualFocus
        }
    }
}
