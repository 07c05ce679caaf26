import QtQuick
import QtQuick.Layouts
import Brimlo

// How full the disk is, at the foot of the sidebar.
ColumnLayout {
    spacing: 6
    visible: AppModel.machine.volume.isKnown

    FlatBar {
        fraction: 1 - AppModel.machine.volume.freeShare
        implicitHeight: 4
        label: qsTr("Used space")
        Layout.fillWidth: true
    }
    Label {
        text: qsTr("%1 free").arg(Format.bytes(AppModel.machine.volume.available))
        secondary: true
        font.pixelSize: Theme.small
        Layout.fillWidth: true
    }
}
