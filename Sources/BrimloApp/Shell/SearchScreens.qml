import QtQuick
import Brimlo

// The three states of a search: before it, running, and with results. The visible one has focus,
// unless a control beside the states has it.
Item {
    id: screens

    property bool isBusy: false
    property bool hasResults: false
    property bool focusIsBeside: false
    property alias start: startScope.data
    property alias busy: busyScope.data
    property alias results: resultScope.data

    function settle() {
        if (!focusIsBeside)
            (isBusy ? busyState : hasResults ? resultScope : startScope).focus = true;
    }

    onIsBusyChanged: settle()
    onHasResultsChanged: settle()
    Component.onCompleted: settle()

    FocusScope {
        id: startScope

        anchors.fill: parent
        visible: !screens.isBusy && !screens.hasResults
    }
    FocusScope {
        id: busyState

        anchors.fill: parent
        visible: screens.isBusy

        Item {
            id: busyScope

            anchors.centerIn: parent
            width: Math.min(560, parent.width - 2 * Theme.wide)
            height: childrenRect.height
        }
    }
    FocusScope {
        id: resultScope

        anchors.fill: parent
        visible: screens.hasResults
    }
}
