import QtQuick
import Brimlo

// A button in a list row. Tab reaches only those of the current row; otherwise a long list would
// hold the focus for hundreds of steps.
OutlineButton {
    property bool isCurrent: false

    implicitHeight: Theme.controlHeight - 2
    focusPolicy: isCurrent || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    activeFocusOnTab: isCurrent || activeFocus
}
