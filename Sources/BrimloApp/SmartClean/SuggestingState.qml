import QtQuick
import QtQuick.Layouts
import Brimlo

// A suggestion run: its phase and how long it has been running.
ColumnLayout {
    id: state

    property int seconds: 0

    function count() {
        seconds = Math.max(0, Math.floor((Date.now() - AppModel.smartClean.suggestStarted.getTime()) / 1000));
    }

    spacing: Theme.tight
    onVisibleChanged: count()

    Timer {
        interval: 250
        running: state.visible
        repeat: true
        triggeredOnStart: true
        onTriggered: state.count()
    }
    ProgressLine {
        indeterminate: true
        label: AppModel.smartClean.suggestPhase
        Layout.preferredWidth: 260
        Layout.alignment: Qt.AlignHCenter
        Layout.bottomMargin: Theme.tight
    }
    Label {
        text: AppModel.smartClean.suggestPhase
        font.pixelSize: Theme.title
        font.weight: Font.Medium
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
        Layout.preferredWidth: 420
    }
    Label {
        text: qsTr("%1s · usually 20 to 30 seconds").arg(state.seconds)
        secondary: true
        Layout.alignment: Qt.AlignHCenter
    }
}
