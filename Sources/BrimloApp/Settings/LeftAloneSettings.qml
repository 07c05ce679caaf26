pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// What is never suggested.
SettingsSection {
    id: section

    title: qsTr("Never suggested")

    Notice {
        symbol: "exclamationmark.triangle"
        text: AppModel.smartClean.leftAloneFault
        color: Theme.rebuild
        visible: text !== ""
    }
    Repeater {
        model: AppModel.smartClean.leftAlone

        SettingsLine {
            id: line

            required property var modelData

            symbol: line.modelData.isRule ? "list.bullet" : "folder"
            text: line.modelData.title

            OutlineButton {
                text: qsTr("Suggest again")
                Accessible.description: line.modelData.title
                onClicked: AppModel.smartClean.suggestAgain(line.modelData.name, line.modelData.isRule)
            }
        }
    }
    SettingsCaption {
        text: qsTr("“Never Suggest This” in the menu of a suggestion adds it here. Neither Smart Clean nor auto-clean offers it, nor anything that holds it.")
    }
}
