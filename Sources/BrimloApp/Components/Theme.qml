pragma Singleton

import QtQuick

// Colours, type and distances. The desktop's settings are assigned from outside; everything else
// follows from them.
QtObject {
    id: theme

    property bool dark: false
    property bool reduceMotion: false
    property bool highContrast: false
    property color accentColor: brand
    property real fontScale: 1
    property string fontFamily: ""

    readonly property color brand: "#1f6f8b"
    readonly property color white: "#ffffff"
    readonly property color black: "#000000"

    // By meaning. Fills are for shapes; texts are readable on every background below.
    readonly property color safe: Qt.rgba(0.36, 0.66, 0.47, 1)
    readonly property color rebuild: Qt.rgba(0.85, 0.62, 0.24, 1)
    readonly property color review: Qt.rgba(0.84, 0.39, 0.34, 1)
    readonly property color info: Qt.rgba(0.36, 0.55, 0.80, 1)
    readonly property color safeText: dark ? "#66ae80" : "#3b6c4d"
    readonly property color rebuildText: dark ? "#d99e3d" : "#7e5c23"
    readonly property color reviewText: dark ? "#de8177" : "#98473e"
    readonly property color infoText: dark ? "#769fd4" : "#3f618d"
    readonly property color subtle: faded(text, 0.06)

    // Backgrounds, from back to front.
    readonly property color window: dark ? "#15181c" : "#f5f6f8"
    readonly property color sidebar: dark ? "#1a1e23" : "#eceef1"
    readonly property color card: dark ? "#1f2429" : "#ffffff"
    readonly property color popup: dark ? "#262c32" : "#ffffff"
    readonly property color field: dark ? "#171b1f" : "#ffffff"
    readonly property color scrim: dark ? Qt.rgba(0, 0, 0, 0.5) : Qt.rgba(0.08, 0.11, 0.14, 0.32)

    // Lines.
    readonly property color border: highContrast ? secondaryText : dark ? "#343b43" : "#dde1e6"
    readonly property color fieldBorder: highContrast ? text : dark ? "#505a65" : "#bcc4cc"
    readonly property color divider: highContrast ? secondaryText : dark ? "#2b3138" : "#e6e9ed"

    // Texts.
    readonly property color text: highContrast ? (dark ? "#ffffff" : "#000000") : dark ? "#e7eaed" : "#1b2127"
    readonly property color secondaryText: highContrast ? (dark ? "#d5dae0" : "#353d45") : dark ? "#a3acb6" : "#59636d"
    readonly property color disabledText: dark ? "#6b757f" : "#98a1aa"

    // Selection and active controls.
    readonly property color chosenAccent: accentColor.valid ? accentColor : brand
    readonly property color accent: onWhite(chosenAccent)
    readonly property color inkOnAccent: contrast(accent, white) >= 4.5 ? white : black
    readonly property color accentText: legible(accentTint, mixed(accentGround, accentTint, selectedShare))
    readonly property color focusRing: accentText
    readonly property color accentGround: dark ? popup : sidebar
    readonly property color accentTint: legible(chosenAccent, accentGround)
    readonly property real selectedShare: dark ? 0.22 : 0.14
    readonly property color selection: faded(accentTint, selectedShare)

    // Type.
    readonly property string family: fontFamily !== "" ? fontFamily : "Inter"
    readonly property int caption: scaled(11)
    readonly property int small: scaled(12)
    readonly property int body: scaled(13)
    readonly property int title: scaled(15)
    readonly property int headline: scaled(20)
    readonly property int large: scaled(28)

    // Distances.
    readonly property int tiny: 4
    readonly property int tight: 8
    readonly property int snug: 12
    readonly property int normal: 16
    readonly property int roomy: 20
    readonly property int wide: 24
    readonly property int huge: 32

    readonly property int radius: 7
    readonly property int radiusLarge: 12

    readonly property int controlHeight: Math.max(30, scaled(13) + 17)
    readonly property int rowHeight: Math.max(32, scaled(13) + 19)

    readonly property int duration: reduceMotion ? 0 : 200
    readonly property int quick: reduceMotion ? 0 : 100
    readonly property int tipDelay: 500

    function scaled(size: real): int {
        return Math.max(8, Math.round(size * fontScale));
    }

    function faded(color: color, opacity: real): color {
        return Qt.rgba(color.r, color.g, color.b, opacity);
    }

    function mixed(one, other, share) {
        return Qt.rgba(one.r + (other.r - one.r) * share, one.g + (other.g - one.g) * share, one.b + (other.b - one.b) * share, 1);
    }

    // Relative luminance and contrast as in WCAG 2.
    function luminance(color: color): real {
        const linear = part => part <= 0.04045 ? part / 12.92 : Math.pow((part + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
    }

    function contrast(one: color, other: color): real {
        const a = luminance(one);
        const b = luminance(other);
        return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    }

    // The colour, darkened or lightened until text in it is readable on `ground`.
    function legible(color: color, ground: color): color {
        const by = luminance(ground) > 0.18 ? -0.01 : 0.01;
        let found = Qt.rgba(color.r, color.g, color.b, 1);
        for (let light = color.hslLightness; contrast(found, ground) < 4.6 && light >= 0 && light <= 1; light += by)
            found = Qt.hsla(Math.max(0, color.hslHue), color.hslSaturation, light, 1);
        return found;
    }

    // A light accent stays as it is and has black text; a medium one is darkened for white text.
    function onWhite(color: color): color {
        return contrast(color, white) < 2.6 ? color : legible(color, white);
    }
}
