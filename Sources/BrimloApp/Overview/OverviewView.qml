import QtQuick
import QtQuick.Layouts
import Brimlo

Screen {
    id: screen

    title: qsTr("Overview")
    onShown: {
        AppModel.machine.refresh();
        storage.barGrown = true;
    }

    ScrollPane {
        Layout.fillWidth: true
        Layout.fillHeight: true

        Notice {
            symbol: "lock"
            text: qsTr("Full Disk Access is off, so protected caches (Safari, Mail, Photos) are invisible to scans.")
            buttonText: qsTr("Open System Settings")
            color: Theme.rebuild
            visible: !AppModel.machine.hasFullDiskAccess
            onClicked: AppModel.machine.openPrivacySettings()
        }
        StorageCard {
            id: storage

            Layout.fillWidth: true
        }
        ReclaimableCard {
            Layout.fillWidth: true
        }
        SafetyCard {
            Layout.fillWidth: true
        }
    }
}
