import QtQuick
import QtQuick.Layouts
import Brimlo

// A running scan. Its figures arrive in steps and count up between them.
ColumnLayout {
    id: state

    property real files: AppModel.analyzer.scanFiles
    property real bytes: AppModel.analyzer.scanBytes

    spacing: Theme.tiny

    Spinner {
        size: 48
        Layout.alignment: Qt.AlignHCenter
        Layout.bottomMargin: Theme.normal
    }
    Label {
        text: qsTr("%1 files").arg(Format.count(state.files))
        font.pixelSize: Theme.large
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
    }
    Label {
        text: Format.bytes(state.bytes)
        font.pixelSize: Theme.title
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
    }
    PathText {
        path: AppModel.analyzer.scanPath
        secondary: true
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
        Layout.minimumHeight: Math.ceil(1.4 * Theme.body)
    }
    OutlineButton {
        text: qsTr("Cancel")
        focus: true
        onClicked: AppModel.analyzer.cancelScan()
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: Theme.snug
    }
    Behavior on files {
        enabled: state.visible && !Theme.reduceMotion

        NumberAnimation {
            duration: 150
        }
    }
    Behavior on bytes {
        enabled: state.visible && !Theme.reduceMotion

        NumberAnimation {
            duration: 150
        }
    }
}
