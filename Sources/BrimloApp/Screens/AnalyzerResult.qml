import QtQuick
import QtQuick.Layouts
import Brimlo

// The scanned tree: the way down to a folder, what is in it as a list or as a treemap, and what is
// selected of that.
FocusScope {
    id: result

    required property PlanReview review
    readonly property bool isList: AppModel.analyzerMode === 0

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

    NodeRows {
        id: rows

        source: AppModel
    }
    CrumbRows {
        id: crumbs

        source: AppModel
    }
    Connections {
        target: AppModel

        function onCurrentChanged() {
            newFolder.restart();
        }
    }
    // The rows may hear of the folder after this.
    Timer {
        id: newFolder

        interval: 0
        onTriggered: list.begin()
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        BreadcrumbBar {
            crumbs: crumbs
            Layout.fillWidth: true
        }
        Divider {
            Layout.fillWidth: true
        }
        NodeHeader {
            countWidth: list.countWidth
            dateWidth: list.dateWidth
            visible: list.visible
            Layout.fillWidth: true
            Layout.topMargin: Theme.tiny
            Layout.leftMargin: Theme.wide
            Layout.rightMargin: Theme.wide
        }
        NodeList {
            id: list

            rows: rows
            review: result.review
            visible: result.isList && rows.count > 0
            focus: true
            onBackWanted: result.goUp()
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        TreemapView {
            id: map

            rows: rows
            review: result.review
            visible: !result.isList && crumbs.size > 0
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        EmptyState {
            symbol: "folder"
            title: rows.count === 0 && AppModel.unreadableCount > 0 ? qsTr("Nothing in this folder could be read.") : rows.count === 0 ? qsTr("This folder is empty.") : qsTr("Nothing in this folder takes up space.")
            visible: !list.visible && !map.visible
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.margins: Theme.wide
        }
        SelectionBar {
            rows: rows
            review: result.review
            Layout.fillWidth: true
        }
    }
}
