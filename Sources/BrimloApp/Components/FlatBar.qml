pragma ComponentBehavior: Bound

import QtQuick

// A flat bar: filled to a fraction, or split into `shares`, a list of {fraction, color}.
Item {
    id: bar

    property real fraction: 0
    property color color: Theme.accentText
    property color trackColor: Theme.faded(Theme.text, 0.1)
    property var shares: null
    property bool animated: true
    property string label
    readonly property var parts: shares ?? [
        {
            fraction: fraction,
            color: color
        }
    ]

    implicitWidth: 120
    implicitHeight: 6
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    function bounded(value) {
        return Math.min(1, Math.max(0, Number(value) || 0));
    }

    // The start of the part, as a fraction.
    function start(index) {
        let sum = 0;
        for (let i = 0; i < index; ++i)
            sum += bounded(parts[i].fraction);
        return Math.min(1, sum);
    }

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: bar.trackColor
    }
    Item {
        anchors.fill: parent
        clip: bar.parts.length > 1

        Repeater {
            model: bar.parts.length

            Rectangle {
                required property int index
                readonly property var part: bar.parts[index]
                readonly property bool isFirst: index === 0
                readonly property real end: bar.width * Math.min(1, bar.start(index) + bar.bounded(part?.fraction))

                // Each extends below the previous one, so that only the outer ends are round.
                z: -index
                x: 0
                width: bar.bounded(part?.fraction) > 0 ? Math.max(end, isFirst ? bar.height : 0) : 0
                height: bar.height
                radius: height / 2
                color: part?.color ?? "transparent"

                Behavior on width {
                    enabled: bar.animated

                    NumberAnimation {
                        duration: Theme.duration
                        easing.type: Easing.OutQuad
                    }
                }
            }
        }
    }
}
