import QtQuick

// A busy indicator. With reduced motion it fades in and out instead of turning.
Icon {
    id: spinner

    property bool running: visible

    symbol: "progress.indicator"
    color: Theme.secondaryText
    transformOrigin: Item.Center
    smooth: true
    Accessible.ignored: false
    Accessible.role: Accessible.Animation
    Accessible.name: qsTr("Working")

    RotationAnimator on rotation {
        from: 0
        to: 360
        duration: 1100
        loops: Animation.Infinite
        running: spinner.running && spinner.visible && !Theme.reduceMotion
        onRunningChanged: if (!running)
            spinner.rotation = 0
    }
    SequentialAnimation on opacity {
        loops: Animation.Infinite
        running: spinner.running && spinner.visible && Theme.reduceMotion

        NumberAnimation {
            from: 1
            to: 0.4
            duration: 1400
        }
        NumberAnimation {
            from: 0.4
            to: 1
            duration: 1400
        }
    }
}
