import QtQuick
import Brimlo

// What stands above the built-in rules.
Item {
    id: heading

    implicitHeight: words.implicitHeight + Theme.wide + Theme.tight

    SectionHeading {
        id: words

        text: qsTr("Built-in rules")
        line: qsTr("These ship with Brimlo. Turn one off to exclude it from Smart Clean and auto-clean; it stays here so you can turn it back on. Built-in rules can't be edited — copy one into a new rule to customize it.")
        x: Theme.snug
        y: Theme.wide
        width: Math.min(heading.width - 2 * Theme.snug, 820)
    }
}
