pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brimlo

// The window: the sidebar, the screen of the current section, the messages over it, and the sheets
// of no single screen.
Window {
    id: window

    title: qsTr("Brimlo")
    width: 1180
    height: 780
    minimumWidth: 1000
    minimumHeight: 660
    visible: true
    color: Theme.window
    Component.onCompleted: {
        sidebar.takeFocus();
        AppModel.settings.offerCLIInstallIfNeeded();
    }

    DesktopTheme {}
    AppActions {
        id: actions

        onAboutRequested: about.presented = true
        onShortcutsRequested: shortcuts.presented = true
        onQuitRequested: window.close()
    }
    Loader {
        active: Desktop.menuBar !== ""
        Component.onCompleted: if (active)
            setSource(Desktop.menuBar, {
                actions: actions
            })
    }
    T.SplitView {
        anchors.fill: parent
        handle: Item {
            implicitWidth: 1
            containmentMask: Item {
                x: -4
                width: 9
                height: window.height
            }
        }

        Sidebar {
            id: sidebar

            actions: actions
            implicitWidth: Math.min(Theme.scaled(220), Math.max(window.width * 0.25, Theme.scaled(150)))
            T.SplitView.minimumWidth: 200
            T.SplitView.maximumWidth: Math.max(320, Theme.scaled(220))
        }
        Item {
            T.SplitView.fillWidth: true

            SectionScreens {
                id: screens

                anchors.fill: parent
            }
            // Above the buttons at the bottom of a screen. It moves nothing, so that a press never
            // lands on another row than the one meant.
            ColumnLayout {
                spacing: Theme.tight
                width: Math.min(parent.width - 2 * Theme.wide, Theme.scaled(640))
                anchors.horizontalCenter: parent.horizontalCenter
                anchors.bottom: parent.bottom
                anchors.bottomMargin: screens.footerHeight + Theme.snug

                BusyLine {}
                BannerLine {}
            }
        }
    }
    LazyLoader {
        needed: AppModel.cleanup.showResult
        source: "ResultSheet.qml"
    }
    LazyLoader {
        needed: AppModel.diskAccount.isOpen
        source: "AccountSheet.qml"
    }
    LazyLoader {
        needed: AppModel.machine.showsSystem
        source: "SystemSheet.qml"
    }
    LazyLoader {
        needed: AppModel.history.question.isOpen
        source: "TrashSheet.qml"
    }
    LazyLoader {
        needed: AppModel.history.stayed.length > 0
        source: "StayedSheet.qml"
    }
    LazyLoader {
        needed: AppModel.rules.ruleDraft !== null
        source: "RuleEditorSheet.qml"
    }
    LazyLoader {
        needed: AppModel.settings.offersCLI
        source: "CLIOfferSheet.qml"
    }
    AboutSheet {
        id: about

        onDismissed: presented = false
    }
    ShortcutsSheet {
        id: shortcuts

        actions: actions
        onDismissed: presented = false
    }

    // The desktop's settings decide how the window looks.
    component DesktopTheme: Item {
        Binding {
            target: Theme
            property: "dark"
            value: DesktopSettings.isDark
        }
        Binding {
            target: Theme
            property: "reduceMotion"
            value: DesktopSettings.reduceMotion
        }
        Binding {
            target: Theme
            property: "highContrast"
            value: DesktopSettings.highContrast
        }
        Binding {
            target: Theme
            property: "accentColor"
            value: DesktopSettings.accent
        }
        Binding {
            target: Theme
            property: "fontScale"
            value: DesktopSettings.fontScale
        }
        Binding {
            target: Theme
            property: "fontFamily"
            value: DesktopSettings.fontFamily
        }
    }

    // The long operation under way.
    component BusyLine: FloatingLine {
        id: line

        text: AppModel.busy

        Spinner {
            size: 16
            running: line.visible
        }
        Label {
            text: line.shownText
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }

    // The message about the last operation. A long one scrolls.
    component BannerLine: FloatingLine {
        id: line

        text: AppModel.banner.text

        Icon {
            symbol: "info.circle"
            color: Theme.infoText
        }
        Flickable {
            id: pane

            implicitHeight: Math.min(words.implicitHeight, 6 * Theme.roomy)
            contentHeight: words.implicitHeight
            interactive: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            clip: interactive
            Layout.fillWidth: true

            Label {
                id: words

                text: line.shownText
                width: pane.width
                wrapMode: Text.Wrap
                lineHeight: 1.15
                Accessible.ignored: true
            }
        }
        OutlineButton {
            text: qsTr("Undo")
            symbol: "arrow.uturn.backward"
            visible: AppModel.banner.offersUndo && actions.canUndo
            implicitHeight: Theme.controlHeight - 2
            onClicked: actions.undo()
        }
        OutlineButton {
            text: qsTr("Dismiss")
            implicitHeight: Theme.controlHeight - 2
            onClicked: AppModel.banner.show("")
        }
    }
}
