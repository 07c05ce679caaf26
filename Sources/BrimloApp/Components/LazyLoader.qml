import QtQuick

// Creates its content when first `needed`, and keeps it.
Loader {
    property bool needed: false
    property bool kept: false

    active: needed || kept
    onLoaded: kept = true
}
