#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace Brimlo {

/// A list as the screens see it: rows with named roles. What the rows are is for `RowModel`.
class RowList : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS

    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int count() const { return rowCount({}); }

Q_SIGNALS:
    void countChanged();

protected:
    /// Rows that follow one another.
    struct Run {
        int first = 0;
        int last = 0;
    };

    /// How a list becomes another one of which some rows are the same.
    struct Steps {
        std::vector<Run> removals;    ///< The last ones first, in the places of the old list.
        std::vector<Run> insertions;  ///< In the order to be made, in the places of the new list.
    };

    /// For each old row its place in the new list, or nullopt: the steps that leave as many rows
    /// as possible untouched. Nullopt when there would be so many that a reset is cheaper.
    [[nodiscard]] static std::optional<Steps> steps(
        const std::vector<std::optional<std::size_t>>& places, std::size_t newCount);

    [[nodiscard]] static QHash<int, QByteArray> numbered(const std::vector<const char*>& roles);
};

}  // namespace Brimlo
