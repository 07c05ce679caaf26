import QtQuick
import QtQuick.Layouts
import Brimlo

// The bar below the suggestions: what is ticked and the actions on it, or the progress of the
// clean.
Item {
    id: bar

    signal previewWanted
    signal cleanWanted

    implicitHeight: Math.max(Theme.controlHeight + 2 * Theme.snug, words.implicitHeight + 2 * Theme.tight)

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.wide
        anchors.rightMargin: Theme.wide
        spacing: Theme.snug
        visible: !AppModel.cleanup.isCleaning

        // Wraps.
        Flow {
            id: words

            spacing: Theme.snug
            Layout.fillWidth: true

            Label {
                id: selected

                text: qsTr("%1 selected").arg(Format.bytes(AppModel.smartClean.planBytes))
                font.pixelSize: Theme.title
                font.weight: Font.DemiBold
            }
            Label {
                text: AppModel.smartClean.planFrees
                secondary: true
                visible: text !== ""
                height: selected.height
                verticalAlignment: Text.AlignVCenter
            }
            Label {
                text: qsTr("%1 items").arg(Format.count(AppModel.smartClean.planCount))
                secondary: true
                height: selected.height
                verticalAlignment: Text.AlignVCenter
            }
            Row {
                spacing: Theme.tight

                Icon {
                    symbol: AppModel.smartClean.planHasFinalItems ? "exclamationmark.triangle" : "arrow.uturn.backward.circle"
                    color: Theme.secondaryText
                    anchors.verticalCenter: parent.verticalCenter
                }
                Label {
                    text: AppModel.smartClean.planDestination
                    secondary: true
                    height: selected.height
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
        OutlineButton {
            text: qsTr("Preview")
            enabled: AppModel.smartClean.planCount > 0
            onClicked: bar.previewWanted()
        }
        SolidButton {
            text: qsTr("Review & Clean…")
            symbol: "sparkles"
            enabled: AppModel.smartClean.planCount > 0
            onClicked: bar.cleanWanted()
        }
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.wide
        anchors.rightMargin: Theme.wide
        anchors.topMargin: Theme.tight
        anchors.bottomMargin: Theme.tight
        spacing: Theme.tiny
        visible: AppModel.cleanup.isCleaning

        ProgressLine {
            value: AppModel.cleanup.cleaningDone / Math.max(1, AppModel.cleanup.cleaningTotal)
            label: progress.text
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.snug
            Layout.fillWidth: true

            Label {
                id: progress

                text: qsTr("%1 of %2").arg(AppModel.cleanup.cleaningDone).arg(AppModel.cleanup.cleaningTotal)
                font.weight: Font.Medium
            }
            PathText {
                path: AppModel.cleanup.cleaningPath
                secondary: true
                Layout.fillWidth: true
            }
            OutlineButton {
                text: AppModel.cleanup.isStopping ? qsTr("Stopping…") : qsTr("Stop")
                enabled: !AppModel.cleanup.isStopping
                onClicked: AppModel.cleanup.stop()
            }
        }
    }
}
