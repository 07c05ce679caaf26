import QtQuick
import QtQuick.Layouts
import Brimlo

// What an undo could not put back, each with its reason.
Sheet {
    id: sheet

    readonly property var stayed: AppModel.history.stayed

    // Kept, because the fading sheet would show that the list was emptied.
    exit: null
    title: qsTr("Not everything was put back")
    subtitle: stayed.length === 1 ? qsTr("1 item could not be restored") : qsTr("%1 items could not be restored").arg(Format.count(stayed.length))
    symbol: "exclamationmark.circle.fill"
    symbolColor: Theme.rebuild
    presented: stayed.length > 0
    onDismissed: AppModel.history.forgetStayed()
    defaultButton: done
    footer: [
        Item {
            Layout.fillWidth: true
        },
        SolidButton {
            id: done

            text: qsTr("Done")
            onClicked: AppModel.history.forgetStayed()
        }
    ]

    ProblemList {
        problems: sheet.stayed
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
}
