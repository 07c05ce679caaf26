import QtQuick
import QtQuick.Layouts
import Brimlo

// What the ratings mean, and why nothing is lost.
Card {
    padding: Theme.roomy
    spacing: Theme.normal

    SectionHeading {
        text: qsTr("How it keeps you safe")
        Layout.fillWidth: true
    }
    GridLayout {
        columns: parent.width > 700 ? 2 : 1
        columnSpacing: Theme.huge
        rowSpacing: Theme.normal
        Layout.fillWidth: true

        SafetyPoint {
            symbol: RiskWords.symbol("safe")
            color: Theme.safe
            title: qsTr("Safe")
            line: qsTr("Caches the app recreates on its own. Preselected, and they rebuild themselves.")
        }
        SafetyPoint {
            symbol: RiskWords.symbol("rebuild")
            color: Theme.rebuild
            title: qsTr("Rebuilds")
            line: qsTr("Comes back, but costs a re-download or rebuild. Never preselected unless it's an old, idle project folder.")
        }
        SafetyPoint {
            symbol: RiskWords.symbol("review")
            color: Theme.review
            title: qsTr("Review")
            line: qsTr("Could be your own data. Never preselected — you decide item by item.")
        }
        SafetyPoint {
            symbol: "arrow.uturn.backward.circle"
            color: Theme.info
            title: qsTr("Trash first, always undoable")
            line: qsTr("Everything goes to the Trash first and every cleanup is logged, so you can restore one item or a whole cleanup from History. Only what Docker holds goes for good, and the review says so.")
        }
    }
}
