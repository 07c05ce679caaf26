pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// A picture of a list, as large as the window allows.
Sheet {
    id: sheet

    function show(address) {
        picture.source = address;
        presented = true;
    }

    title: qsTr("Preview")
    subtitle: Format.oneLine(decodeURIComponent(String(picture.source).split("/").pop()))
    symbol: "eye"
    preferredWidth: 900
    onDismissed: {
        presented = false;
        picture.source = "";
    }
    defaultButton: done
    footer: [
        Label {
            text: picture.status === Image.Error ? qsTr("The picture can't be shown.") : picture.status === Image.Loading ? qsTr("Loading…") : ""
            secondary: true
            Layout.fillWidth: true
        },
        SolidButton {
            id: done

            text: qsTr("Done")
            onClicked: sheet.dismissed()
        }
    ]

    Image {
        id: picture

        asynchronous: true
        cache: false
        autoTransform: true
        fillMode: Image.PreserveAspectFit
        // Decoded no larger than it is drawn.
        sourceSize.width: 1600
        sourceSize.height: 1600
        Layout.fillWidth: true
        Layout.preferredHeight: Math.min(560, (sheet.parent?.height ?? 1000) - 260)
        Accessible.role: Accessible.Graphic
        Accessible.name: sheet.subtitle
    }
}
