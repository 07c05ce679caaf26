import QtQuick
import Brimlo

// A button of a list's row. Only those of the current row are reached by Tab: a long list would
// else hold the focus for hundreds of steps.
OutlineButton {
    property bool isCurrent: false

    implicitHeight: Theme.controlHeight - 2
    focusPolicy: isCurrent || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    activeFocusOnTab: isCurrent || activeFocus
}
