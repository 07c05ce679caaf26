import QtQuick

// Any other action that has words.
ButtonBase {
    id: button

    background: OutlineButtonStyle {
        button: button
    }
}
