import QtQuick
import QtQuick.Layouts

// A highlighted message, with a button if there is something to do about it.
Item {
    id: notice

    property string text
    property string symbol: "info.circle"
    property string buttonText
    property color color: Theme.info

    signal clicked

    implicitWidth: line.implicitWidth + 2 * Theme.snug
    implicitHeight: line.implicitHeight + 20
    Layout.fillWidth: true
    Accessible.role: Accessible.Notification
    Accessible.name: text

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius + 2
        color: Theme.faded(notice.color, 0.1)
    }
    RowLayout {
        id: line

        anchors.fill: parent
        anchors.margins: 10
        anchors.leftMargin: Theme.snug
        anchors.rightMargin: notice.buttonText !== "" ? 10 : Theme.snug
        spacing: 10

        Icon {
            symbol: notice.symbol
            visible: symbol !== ""
            color: Theme.legible(notice.color, Theme.mixed(Theme.dark ? Theme.popup : Theme.window, notice.color, 0.1))
            Layout.alignment: Qt.AlignTop
            Layout.topMargin: Math.max(0, (words.implicitHeight / Math.max(1, words.lineCount) - height) / 2 + (button.visible && words.lineCount === 1 ? (button.height - words.implicitHeight) / 2 : 0))
        }
        Label {
            id: words

            text: notice.text
            wrapMode: Text.Wrap
            lineHeight: 1.15
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        OutlineButton {
            id: button

            text: notice.buttonText
            visible: text !== ""
            implicitHeight: Theme.controlHeight - 2
            onClicked: notice.clicked()
        }
    }
}
