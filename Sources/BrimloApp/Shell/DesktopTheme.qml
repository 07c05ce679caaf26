import QtQuick
import Brimlo

// Lets what the user set for all of the desktop decide how the window looks.
Item {
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
