import QtQuick

// The one main action of a place.
ButtonBase {
    id: button

    ink: Theme.inkOnAccent
    background: SolidButtonStyle {
        button: button
    }
}
