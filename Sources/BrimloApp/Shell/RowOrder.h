#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// By what the rows of a list are sorted. Main thread.
class RowOrder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY changed)
    Q_PROPERTY(bool ascending READ ascending WRITE setAscending NOTIFY changed)

public:
    /// The words of the keys, the first of which sorts at first, with the largest first.
    explicit RowOrder(QStringList keys);

    /// A word that is no key changes nothing.
    [[nodiscard]] const QString& key() const { return key_; }
    void setKey(const QString& key);
    [[nodiscard]] bool ascending() const { return ascending_; }
    void setAscending(bool ascending);
    /// Sorts by another key; by the same key, in reverse.
    Q_INVOKABLE void sortBy(const QString& key);

Q_SIGNALS:
    void changed();

private:
    const QStringList keys_;
    QString key_;
    bool ascending_ = false;
};

}  // namespace Brimlo
