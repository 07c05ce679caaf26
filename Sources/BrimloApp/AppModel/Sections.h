#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// The screens of the window for QML, in the order of the sidebar and of the Go menu.
class Sections : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    /// For each its `id`, `title` and `symbol`, texts.
    Q_PROPERTY(QVariantList all READ all CONSTANT)

public:
    [[nodiscard]] static QVariantList all();
};

}  // namespace Brimlo
