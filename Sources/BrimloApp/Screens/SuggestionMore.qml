import QtQuick
import Brimlo

// How many items of a suggestion are not listed.
Label {
    required property SuggestionRow row

    text: row.moreText
    secondary: true
    leftPadding: 34
}
