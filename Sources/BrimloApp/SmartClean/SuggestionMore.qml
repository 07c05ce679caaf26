import QtQuick
import Brimlo

// How many items of a suggestion are not listed.
SuggestionRow {
    id: row

    required property int itemCount

    text: qsTr("+ %1 more").arg(Format.count(itemCount))

    Label {
        text: row.text
        secondary: true
        leftPadding: 34
        Accessible.ignored: true
    }
}
