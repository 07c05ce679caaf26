import QtQuick
import QtQuick.Layouts
import Brimlo

// The column headers of the list. A click sorts by a column, a second click reverses the order.
RowLayout {
    id: header

    property int countWidth: 80
    property int dateWidth: 100
    property int growthWidth: 0

    function sortBy(key) {
        if (AppModel.analyzer.rows.sortKey === key)
            AppModel.analyzer.rows.ascending = !AppModel.analyzer.rows.ascending;
        else
            AppModel.analyzer.rows.sortKey = key;
    }

    spacing: Theme.snug

    NodeHeaderCell {
        sortKey: "Name"
        Layout.fillWidth: true
        onClicked: header.sortBy(sortKey)
    }
    NodeHeaderCell {
        sortKey: "Growth"
        text: qsTr("± since %1").arg(Format.date(AppModel.analyzer.since))
        flushRight: true
        visible: header.growthWidth > 0
        Layout.preferredWidth: header.growthWidth
        onClicked: header.sortBy(sortKey)
    }
    NodeHeaderCell {
        sortKey: "Items"
        flushRight: true
        Layout.preferredWidth: header.countWidth
        onClicked: header.sortBy(sortKey)
    }
    NodeHeaderCell {
        sortKey: "Size"
        flushRight: true
        Layout.preferredWidth: Math.max(header.countWidth, sample.implicitWidth)
        onClicked: header.sortBy(sortKey)
    }
    NodeHeaderCell {
        sortKey: "Modified"
        Layout.preferredWidth: header.dateWidth
        Layout.leftMargin: Theme.tight
        onClicked: header.sortBy(sortKey)
    }
    SizeText {
        id: sample

        visible: false
    }
}
