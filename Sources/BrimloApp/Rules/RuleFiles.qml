import QtCore
import QtQuick
import QtQuick.Dialogs
import Brimlo

// The file dialogs for import and export. Each is created when first needed.
Item {
    id: files

    function importRules() {
        importing.active = true;
        (importing.item as FileDialog).open();
    }
    function exportRules() {
        exporting.active = true;
        (exporting.item as FileDialog).open();
    }

    visible: false

    Loader {
        id: importing

        active: false
        sourceComponent: FileDialog {
            title: qsTr("Import rules")
            nameFilters: [qsTr("JSON files (*.json)")]
            onAccepted: AppModel.rules.importRules(selectedFile)
        }
    }
    Loader {
        id: exporting

        active: false
        sourceComponent: FileDialog {
            title: qsTr("Export rules")
            fileMode: FileDialog.SaveFile
            nameFilters: [qsTr("JSON files (*.json)")]
            defaultSuffix: "json"
            selectedFile: StandardPaths.writableLocation(StandardPaths.DocumentsLocation) + "/brimlo-rules.json"
            onAccepted: AppModel.rules.exportRules(selectedFile)
        }
    }
}
