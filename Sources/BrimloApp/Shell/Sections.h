#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// The sections of the window, in the order of the sidebar and the Go menu.
class Sections : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    /// Maps with `id` (a `Section`), `title` and `symbol`.
    Q_PROPERTY(QVariantList all READ all CONSTANT)

public:
    // NOLINTBEGIN(readability-identifier-naming): QML ignores other enumerators.
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
    // NOLINTEND(readability-identifier-naming)
    Q_ENUM(Section)

    [[nodiscard]] static QVariantList all();
};

using Section = Sections::Section;

}  // namespace Brimlo
