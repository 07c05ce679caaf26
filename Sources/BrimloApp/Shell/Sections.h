#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// The screens of the window, in the order of the sidebar and of the Go menu.
class Sections : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    /// For each its `id`, a `Section`, and its `title` and `symbol`, texts.
    Q_PROPERTY(QVariantList all READ all CONSTANT)

public:
    // In upper case: QML knows no other enumerators.
    enum class Section {
        Overview,
        Clean,
        Analyzer,
        LargeFiles,
        Rules,
        Duplicates,
        History,
        Settings,
    };
    Q_ENUM(Section)

    [[nodiscard]] static QVariantList all();
};

using Section = Sections::Section;

}  // namespace Brimlo
