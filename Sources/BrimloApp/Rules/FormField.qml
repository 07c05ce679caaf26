import QtQuick
import QtQuick.Layouts
import Brimlo

// A field of a form: a title, the field, a caption, and whatever else belongs below it.
ColumnLayout {
    id: form

    property string title
    property string caption
    property string value
    property alias placeholder: input.placeholder
    readonly property alias field: input
    default property alias content: more.data

    signal edited(string text)

    spacing: 5
    Layout.fillWidth: true

    Label {
        text: form.title
        font.weight: Font.Medium
        Layout.fillWidth: true
    }
    Field {
        id: input

        text: form.value
        label: form.title
        Layout.fillWidth: true
        onTextEdited: form.edited(text)
    }
    FormCaption {
        text: form.caption
        visible: text !== ""
    }
    RowLayout {
        id: more

        visible: children.length > 0
    }
}
