import QtQuick
import QtQuick.Layouts
import Brimlo

// How full the disk is, at the foot of the sidebar.
ColumnLayout {
    spacing: 6
    visible: AppModel.volume.isKnown

    FlatBar {
        fraction: 1 - AppModel.volume.freeShare
        implicitHeight: 4
        label: qsTr("Used space")
        Layout.fillWidth: true
    }
    Label {
        text: qsTr("%1 free").arg(Format.bytes(AppModel.volume.available))
        secondary: true
        font.pixelSize: Theme.small
        Layout.fillWidth: true
    }
}
