import QtQuick
import QtQuick.Templates as T

// The ground of a main action.
Rectangle {
    id: ground

    required property T.Button button

    radius: Theme.radius
    color: button.hovered && button.enabled ? Theme.mixed(Theme.accent, Theme.text, 0.12) : Theme.accent

    FocusRing {
        shown: ground.button.visualFocus
    }
}
