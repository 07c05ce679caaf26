pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The suggestions: ticked here, reviewed in a sheet, then cleaned.
Screen {
    id: screen

    readonly property SuggestionRows rows: AppModel.smartClean.rows
    readonly property PlanReview review: AppModel.smartClean.review
    property bool previewing: false

    function preview() {
        previewing = true;
        review.openSelection();
    }
    function confirm() {
        previewing = false;
        review.openSelection();
    }
    function answerRequest() {
        if (AppModel.smartClean.previewRequested) {
            AppModel.smartClean.previewRequested = false;
            preview();
        }
    }
    function show() {
        if (visible && AppModel.smartClean.rows.foundCount === 0)
            AppModel.smartClean.loadSuggestions();
    }

    title: qsTr("Smart Clean")
    footerHeight: bar.height
    toolbar: [
        AudiencePicker {
            Layout.fillWidth: true
            Layout.minimumWidth: 100
            Layout.preferredWidth: Theme.scaled(168)
            Layout.maximumWidth: Theme.scaled(168)
        },
        ToolbarButton {
            text: qsTr("Add rule")
            symbol: "plus"
            help: qsTr("Teach Brimlo to clean any app")
            onClicked: AppModel.rules.newRule()
        },
        ToolbarButton {
            text: qsTr("Select safe")
            onClicked: AppModel.smartClean.selectAllSafe()
        },
        ToolbarButton {
            text: qsTr("Clear selection")
            onClicked: AppModel.smartClean.clearSelection()
        },
        ToolbarButton {
            id: legendButton

            symbol: "questionmark.circle"
            help: qsTr("What do the ratings mean?")
            checked: legend.presented
            onClicked: legend.presented = !legend.presented

            Popover {
                id: legend

                parent: legendButton
                label: legendButton.help
                onDismissed: presented = false

                RiskLegend {
                    Layout.preferredWidth: 400
                }
            }
        },
        ToolbarButton {
            symbol: "arrow.clockwise"
            help: qsTr("Rescan")
            enabled: !AppModel.smartClean.isSuggesting
            onClicked: AppModel.smartClean.loadSuggestions()
        }
    ]
    onVisibleChanged: show()
    Component.onCompleted: {
        show();
        answerRequest();
    }

    Connections {
        target: AppModel.smartClean

        function onPreviewRequestedChanged() {
            screen.answerRequest();
        }
    }
    Binding {
        target: screen.rows
        property: "query"
        value: search.text
    }
    DisposeSheet {
        review: screen.review
        dryRunOnly: screen.previewing
    }

    SearchField {
        id: search

        placeholder: qsTr("Search apps and tools")
        Layout.fillWidth: true
        Layout.margins: Theme.snug
        Layout.leftMargin: Theme.wide
        Layout.rightMargin: Theme.wide
        Layout.bottomMargin: 0
        Keys.onDownPressed: list.forceActiveFocus()
    }
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        SuggestingState {
            anchors.centerIn: parent
            visible: AppModel.smartClean.isSuggesting
        }
        EmptyState {
            anchors.centerIn: parent
            width: parent.width - 2 * Theme.wide
            visible: !AppModel.smartClean.isSuggesting && screen.rows.visibleCount === 0
            symbol: "sparkles"
            title: AppModel.smartClean.hasSuggested ? qsTr("Nothing to clean") : qsTr("Nothing scanned yet")
            line: !AppModel.smartClean.hasSuggested ? qsTr("Press Rescan to find cleanable items.") : screen.rows.foundCount > 0 ? qsTr("What was found is for other audiences.") : qsTr("No rule finds anything on this disk now.")
        }
        EmptyState {
            anchors.centerIn: parent
            width: parent.width - 2 * Theme.wide
            visible: !AppModel.smartClean.isSuggesting && screen.rows.visibleCount > 0 && list.count === 0
            symbol: "magnifyingglass"
            title: qsTr("No Results for “%1”").arg(Format.oneLine(search.text.trim()))
            line: qsTr("Check the spelling or try a new search.")
        }
        SuggestionList {
            id: list

            rows: screen.rows
            focus: true
            anchors.fill: parent
            anchors.topMargin: Theme.tight
            visible: !AppModel.smartClean.isSuggesting && list.count > 0
        }
    }
    Divider {
        Layout.fillWidth: true
    }
    SmartCleanBar {
        id: bar

        Layout.fillWidth: true
        onPreviewWanted: screen.preview()
        onCleanWanted: screen.confirm()
    }

    // The audience whose suggestions are visible.
    component AudiencePicker: Picker {
        id: picker

        label: qsTr("Audience")
        model: AppModel.smartClean.rows.audiences
        onActivated: index => AppModel.smartClean.rows.audience = model[index].id

        Binding {
            target: picker
            property: "currentIndex"
            value: picker.model.findIndex(audience => audience.id === AppModel.smartClean.rows.audience)
        }
    }
}
