import QtQuick
import QtQuick.Dialogs
import Brimlo

// The system's folder dialog, starting in `path`. Created when first needed.
Item {
    id: chooser

    property string path

    signal chosen(string path)

    function open() {
        loader.active = true;
        const dialog = loader.item as FolderDialog;
        dialog.currentFolder = Places.address(path);
        dialog.open();
    }

    visible: false

    Loader {
        id: loader

        active: false
        sourceComponent: FolderDialog {
            title: qsTr("Choose a folder")
        }
    }
    Connections {
        target: loader.item

        function onAccepted() {
            chooser.chosen(Places.path((loader.item as FolderDialog).selectedFolder));
        }
    }
}
