import QtQuick
import Brimlo

// For whom suggestions are shown.
Picker {
    id: picker

    // In the order of the model's own enumeration, the words without a filter first.
    readonly property var audiences: [
        {
            id: "",
            text: qsTr("All audiences"),
            symbol: ""
        },
        {
            id: "general",
            text: qsTr("Everyone"),
            symbol: "person.2"
        },
        {
            id: "developer",
            text: qsTr("Developers"),
            symbol: "hammer"
        },
        {
            id: "aiml",
            text: qsTr("AI & ML"),
            symbol: "brain"
        },
        {
            id: "video",
            text: qsTr("Video"),
            symbol: "film"
        },
        {
            id: "music",
            text: qsTr("Music"),
            symbol: "music.note"
        },
        {
            id: "photo",
            text: qsTr("Photo & Design"),
            symbol: "camera"
        },
        {
            id: "design3D",
            text: qsTr("3D & Motion"),
            symbol: "cube"
        },
        {
            id: "gamedev",
            text: qsTr("Game dev"),
            symbol: "gamecontroller"
        },
        {
            id: "engineering",
            text: qsTr("Engineering & CAD"),
            symbol: "ruler"
        },
        {
            id: "science",
            text: qsTr("Science & research"),
            symbol: "flask"
        },
        {
            id: "office",
            text: qsTr("Office & business"),
            symbol: "briefcase"
        },
        {
            id: "gaming",
            text: qsTr("Gaming"),
            symbol: "gamecontroller.fill"
        }
    ]

    label: qsTr("Audience")
    model: audiences
    onActivated: index => AppModel.smartClean.personaFilter = audiences[index].id

    Binding {
        target: picker
        property: "currentIndex"
        value: picker.audiences.findIndex(audience => audience.id === AppModel.smartClean.personaFilter)
    }
}
