import QtQuick

// A search field; Ctrl+F goes to it, Escape or its button clears it.
Field {
    id: search

    leftPadding: lens.x + lens.width + 7
    rightPadding: Theme.scaled(16) + 14
    Accessible.searchEdit: true
    Keys.onEscapePressed: event => {
        event.accepted = text !== "";
        clear();
    }

    Shortcut {
        sequence: "Ctrl+F"
        enabled: search.visible
        onActivated: search.forceActiveFocus(Qt.ShortcutFocusReason)
    }
    Icon {
        id: lens

        symbol: "magnifyingglass"
        size: 15
        color: Theme.secondaryText
        x: 9
        anchors.verticalCenter: parent.verticalCenter
    }
    PlainButton {
        symbol: "xmark.circle.fill"
        help: qsTr("Clear the search")
        ink: Theme.secondaryText
        visible: search.text !== ""
        focusPolicy: Qt.NoFocus
        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        onClicked: search.clear()
    }
}
