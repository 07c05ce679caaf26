import QtQuick

// A progress bar from 0 to 1, or an indeterminate one.
Item {
    id: line

    property real value: 0
    property bool indeterminate: false
    property string label
    readonly property bool wanders: indeterminate && visible && !Theme.reduceMotion

    implicitWidth: 200
    implicitHeight: 4
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label
    Accessible.description: indeterminate ? "" : Math.round(100 * Math.min(1, Math.max(0, value))) + "%"

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.faded(Theme.text, 0.1)
    }
    Rectangle {
        id: piece

        property real at

        x: line.wanders ? at * (line.width - width) : 0
        width: line.wanders ? line.width * 0.3 : line.indeterminate ? line.width : line.width * Math.min(1, Math.max(0, line.value || 0))
        height: line.height
        radius: height / 2
        opacity: line.indeterminate && !line.wanders ? 0.5 : 1
        color: Theme.accentText

        SequentialAnimation on at {
            loops: Animation.Infinite
            running: line.wanders

            NumberAnimation {
                from: 0
                to: 1
                duration: 1200
                easing.type: Easing.InOutSine
            }
            NumberAnimation {
                from: 1
                to: 0
                duration: 1200
                easing.type: Easing.InOutSine
            }
        }
    }
}
