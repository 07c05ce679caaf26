import QtQuick
import QtQuick.Layouts
import Brimlo

// Accepts folders dropped on a screen, with a hint while one hovers, and refuses anything else.
// Uses the first of several.
DropArea {
    id: area

    // The hint: what a dropped folder is for.
    property string invitation
    property bool refuses: false

    signal folderDropped(url address)

    function refusesAll(drag) {
        return !drag.hasUrls || !Places.isFolder(drag.urls[0]);
    }

    anchors.fill: parent
    z: 10
    keys: ["text/uri-list"]
    onEntered: drag => refuses = refusesAll(drag)
    // Refused here and not in `onEntered`, because an item that refuses the entering never hears of
    // the leaving.
    onPositionChanged: drag => drag.accepted = !refuses
    onDropped: drag => {
        if (refusesAll(drag)) {
            drag.accepted = false;
        } else {
            drag.accept();
            folderDropped(drag.urls[0]);
        }
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.tight
        radius: Theme.radiusLarge
        color: Theme.mixed(Theme.window, sign.ink, 0.1)
        border.width: 2
        border.color: sign.ink
        opacity: area.containsDrag ? 0.96 : 0
        visible: opacity > 0

        ColumnLayout {
            id: sign

            readonly property color ink: area.refuses ? Theme.reviewText : Theme.accentText

            anchors.centerIn: parent
            width: parent.width - 2 * Theme.wide
            spacing: Theme.snug

            Icon {
                symbol: area.refuses ? "xmark" : "square.and.arrow.down"
                size: 40
                color: sign.ink
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                text: area.refuses ? qsTr("Only a folder can be dropped here.") : area.invitation
                font.pixelSize: Theme.headline
                font.weight: Font.DemiBold
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
        }
        Behavior on opacity {
            NumberAnimation {
                duration: Theme.quick
            }
        }
    }
}
