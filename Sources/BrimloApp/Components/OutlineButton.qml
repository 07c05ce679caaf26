import QtQuick

// A secondary action.
ButtonBase {
    id: button

    background: OutlineButtonStyle {
        button: button
    }
}
