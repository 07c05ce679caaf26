import QtQuick
import QtQuick.Layouts
import Brimlo

// The scanned tree: the path to the current folder, its entries as a list or a treemap, and the
// selection.
FocusScope {
    id: result

    readonly property NodeRows rows: AppModel.analyzer.rows
    readonly property CrumbRows crumbs: AppModel.analyzer.crumbs
    readonly property real footerHeight: selectionBar.height
    readonly property bool isList: AppModel.analyzer.analyzerMode === 0

    function goUp() {
        crumbs.show(crumbs.count - 2);
    }

    Keys.onPressed: event => {
        const isUp = event.key === Qt.Key_Up && event.modifiers & Qt.AltModifier;
        event.accepted = isUp || event.key === Qt.Key_Backspace;
        if (event.accepted)
            goUp();
    }
    onIsListChanged: (isList ? list : map).focus = true

    Connections {
        target: AppModel.analyzer

        function onCurrentChanged() {
            newFolder.restart();
        }
    }
    // Delayed, because the rows may be updated after this signal.
    Timer {
        id: newFolder

        interval: 0
        onTriggered: list.begin()
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        BreadcrumbBar {
            crumbs: result.crumbs
            Layout.fillWidth: true
        }
        Divider {
            Layout.fillWidth: true
        }
        NodeHeader {
            countWidth: list.countWidth
            dateWidth: list.dateWidth
            growthWidth: list.growthWidth
            visible: list.visible
            Layout.fillWidth: true
            Layout.topMargin: Theme.tiny
            Layout.leftMargin: Theme.wide
            Layout.rightMargin: Theme.wide
        }
        NodeList {
            id: list

            rows: result.rows
            visible: result.isList && result.rows.count > 0
            focus: true
            onBackWanted: result.goUp()
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        TreemapView {
            id: map

            rows: result.rows
            visible: !result.isList && result.crumbs.size > 0
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        EmptyState {
            symbol: "folder"
            title: result.rows.count === 0 && AppModel.analyzer.areas.unreadableCount > 0 ? qsTr("Nothing in this folder could be read.") : result.rows.count === 0 ? qsTr("This folder is empty.") : qsTr("Nothing in this folder takes up space.")
            visible: !list.visible && !map.visible
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.margins: Theme.wide
        }
        SelectionBar {
            id: selectionBar

            rows: result.rows
            stays: map.visible
            Layout.fillWidth: true
        }
    }
}
