pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts

// The meaning of the ratings, for a popover.
ColumnLayout {
    spacing: Theme.snug
    implicitWidth: 400

    Label {
        text: qsTr("How to read the ratings")
        font.pixelSize: Theme.title
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Label {
        text: qsTr("Everything goes to Trash first and is listed under History, where you can undo it. Only what Docker holds goes for good, and the review says so.")
        secondary: true
        wrapMode: Text.Wrap
        lineHeight: 1.15
        Layout.fillWidth: true
    }
    Divider {
        Layout.fillWidth: true
    }
    Repeater {
        model: RiskWords.all

        RowLayout {
            id: row

            required property string modelData

            spacing: Theme.snug
            Layout.fillWidth: true

            Item {
                implicitWidth: Math.max(badge.implicitWidth, 84)
                implicitHeight: badge.implicitHeight
                Layout.alignment: Qt.AlignTop

                RiskBadge {
                    id: badge

                    risk: row.modelData
                }
            }
            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true

                Label {
                    text: RiskWords.explanation(row.modelData)
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
                Label {
                    text: RiskWords.outcome(row.modelData)
                    secondary: true
                    font.pixelSize: Theme.small
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
            }
        }
    }
}
