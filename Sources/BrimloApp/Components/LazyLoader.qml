import QtQuick

// Makes what it holds when that is first `needed`, and keeps it.
Loader {
    property bool needed: false
    property bool kept: false

    active: needed || kept
    onLoaded: kept = true
}
