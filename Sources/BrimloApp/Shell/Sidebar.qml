pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The sidebar: the sections, the menu, and how full the disk is.
Rectangle {
    id: sidebar

    required property AppActions actions

    function takeFocus() {
        sections.forceActiveFocus();
        sections.keyed = false;
    }

    color: Theme.sidebar

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.snug
        anchors.topMargin: Theme.tight
        spacing: Theme.tight

        RowLayout {
            spacing: Theme.tight
            Layout.minimumHeight: Theme.controlHeight + 10
            Layout.leftMargin: 10

            Label {
                text: qsTr("Brimlo")
                font.pixelSize: Theme.title
                font.weight: Font.Bold
                Layout.fillWidth: true
                Accessible.role: Accessible.Heading
            }
            ToolbarButton {
                id: menuButton

                symbol: "ellipsis"
                visible: Desktop.menuBar === ""
                help: qsTr("Menu")
                ink: Theme.secondaryText
                checked: menu.visible
                hoverEnabled: !menu.visible
                onClicked: menu.popup(menuButton, 0, menuButton.height + 4)

                AppMenu {
                    id: menu

                    actions: sidebar.actions
                }
            }
        }
        SectionList {
            id: sections

            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
        }
        PlainButton {
            text: qsTr("Version %1 is available").arg(Updater.updateVersion)
            symbol: "square.and.arrow.down"
            ink: Theme.accentText
            visible: Updater.updateVersion !== ""
            onClicked: sidebar.actions.go(Sections.Settings)
            Layout.maximumWidth: parent.width
        }
        VolumeMini {
            Layout.fillWidth: true
            Layout.margins: 10
        }
    }
    Divider {
        vertical: true
        height: parent.height
        anchors.right: parent.right
    }

    // How full the disk is.
    component VolumeMini: ColumnLayout {
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
}
