#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace Brimlo {

/// A list model with named roles, as views see it. A list derives from this and has a `Rows` of its
/// own, which holds what is shown. Main thread.
///
/// Derive from it by its full name: what tells QML of types does not look names up in namespaces.
class RowList : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS

    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    [[nodiscard]] int count() const { return rowCount({}); }

    /// The first row from `row` on, then from the beginning, whose name begins with a text, letter
    /// case ignored; -1 if there is none. The name is that of the role "name", or the last part of
    /// the role "path".
    Q_INVOKABLE [[nodiscard]] int rowBeginningWith(const QString& text, int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent) const final;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const final;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const final;

Q_SIGNALS:
    void countChanged();

protected:
    using QAbstractListModel::QAbstractListModel;

private:
    template <typename Row>
    friend class Rows;

    /// What a `Rows` is to its list, whatever the type of its rows.
    class Content {
    public:
        [[nodiscard]] virtual int count() const = 0;
        [[nodiscard]] virtual QVariant value(int row, int role) const = 0;
        [[nodiscard]] virtual std::vector<const char*> roles() const = 0;

    protected:
        ~Content() = default;
    };

    const Content* content_ = nullptr;
};

}  // namespace Brimlo
