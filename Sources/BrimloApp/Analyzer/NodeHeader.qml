import QtQuick
import QtQuick.Layouts
import Brimlo

// The columns of the analyzer's list; a press sorts by one, a second one turns the order.
RowLayout {
    id: header

    property int countWidth: 80
    property int dateWidth: 100

    function sortBy(key) {
        if (AppModel.analyzer.sortKey === key)
            AppModel.analyzer.ascending = !AppModel.analyzer.ascending;
        else
            AppModel.analyzer.sortKey = key;
    }

    spacing: Theme.snug

    NodeHeaderCell {
        text: qsTr("Name")
        sortKey: "Name"
        Layout.fillWidth: true
        onClicked: header.sortBy(sortKey)
    }
    NodeHeaderCell {
        text: qsTr("Items")
        sortKey: "Items"
        flushRight: true
        Layout.preferredWidth: header.countWidth
        onClicked: header.sortBy(sortKey)
    }
    NodeHeaderCell {
        text: qsTr("Size")
        sortKey: "Size"
        flushRight: true
        Layout.preferredWidth: Math.max(header.countWidth, sample.implicitWidth)
        onClicked: header.sortBy(sortKey)
    }
    NodeHeaderCell {
        text: qsTr("Modified")
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
