pragma ComponentBehavior: Bound

import QtQuick
import Qt.labs.qmlmodels
import Brimlo

// The suggestions, each with its details and items if expanded. Space toggles a row's tick, Left
// and Right collapse and expand, Return expands a suggestion or a folder and shows an item in the
// file manager.
ScrollList {
    id: view

    required property SuggestionRows rows

    function take(index) {
        currentIndex = index;
        forceActiveFocus(Qt.MouseFocusReason);
    }
    function fold(expanded) {
        const head = currentItem as SuggestionHead;
        const folder = currentItem as SuggestionFolderRow;
        const isExpanded = head?.expanded ?? folder?.expanded ?? expanded;
        if (isExpanded !== expanded)
            rows.toggleExpanded(currentIndex);
        else if (head === null && !expanded)
            currentIndex = rows.head(currentIndex);
        keyed = true;
    }
    function open(index) {
        rows.toggleExpanded(index);
        if (currentItem as SuggestionItemRow)
            rows.reveal(index);
    }

    label: qsTr("Suggestions")
    model: rows
    currentIndex: -1
    bottomMargin: Theme.tight
    leftMargin: Theme.snug
    rightMargin: Theme.snug
    onOpened: index => open(index)
    Keys.onSpacePressed: rows.toggle(currentIndex)
    Keys.onLeftPressed: fold(false)
    Keys.onRightPressed: fold(true)

    delegate: DelegateChooser {
        role: "kind"

        DelegateChoice {
            roleValue: "suggestion"

            SuggestionHead {
                onClicked: {
                    view.take(index);
                    view.rows.toggleExpanded(index);
                }
                onTicked: {
                    view.take(index);
                    view.rows.toggle(index);
                }
            }
        }
        DelegateChoice {
            roleValue: "folder"

            SuggestionFolderRow {
                onClicked: {
                    view.take(index);
                    view.rows.toggleExpanded(index);
                }
                onTicked: {
                    view.take(index);
                    view.rows.toggle(index);
                }
            }
        }
        DelegateChoice {
            roleValue: "item"

            SuggestionItemRow {
                onClicked: {
                    view.take(index);
                    view.rows.toggle(index);
                }
                onRevealed: view.rows.reveal(index)
            }
        }
        DelegateChoice {
            roleValue: "details"

            SuggestionDetails {
                onClicked: view.take(index)
            }
        }
        DelegateChoice {
            roleValue: "more"

            SuggestionMore {
                onClicked: view.take(index)
            }
        }
    }

    // How many items of a suggestion are not listed.
    component SuggestionMore: SuggestionRow {
        id: row

        required property int itemCount
        required property bool isInFolder

        text: qsTr("+ %1 more").arg(Format.count(itemCount))

        Label {
            text: row.text
            secondary: true
            leftPadding: row.isInFolder ? 34 + Theme.huge : 34
            Accessible.ignored: true
        }
    }
}
