#pragma once

#include "BrimloApp/Lists/RowList.h"

#include <QtCore/QVariant>

#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Brimlo {

/// A list of `Row` values, for a view. Main thread.
///
/// A row has `operator==` and a `key()` that can be hashed and that no other row has: rows of one
/// key are the same row, changed or not. The values of the roles are made when a view asks for
/// them, so that a long list costs no more than what is seen of it.
template <typename Row>
class RowModel : public RowList {
public:
    /// A role's name and how its value is read off a row.
    struct Role {
        const char* name;
        std::function<QVariant(const Row&)> value;
    };

    [[nodiscard]] int rowCount(const QModelIndex& parent) const final {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex& index, const int role) const final {
        const Row* const found = row(index.row());
        const auto number = static_cast<std::size_t>(role - Qt::UserRole);
        return found != nullptr && number < roles_.size() ? roles_[number].value(*found)
                                                          : QVariant{};
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const final {
        std::vector<const char*> names;
        names.reserve(roles_.size());
        for (const Role& role : roles_) {
            names.push_back(role.name);
        }
        return numbered(names);
    }

protected:
    explicit RowModel(std::vector<Role> roles, QObject* parent = nullptr)
        : RowList{parent}
        , roles_{std::move(roles)} {}

    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }

    /// The row at a place; null when there is none.
    [[nodiscard]] const Row* row(const int place) const {
        return place >= 0 && place < static_cast<int>(rows_.size())
                   ? &rows_[static_cast<std::size_t>(place)]
                   : nullptr;
    }

    /// Replaces the rows, and tells the view of no more than what differs.
    void setRows(std::vector<Row> rows) {
        const std::size_t oldCount = rows_.size();
        if (const auto changes = stepsTo(rows)) {
            apply(*changes, rows);
            tellChanged(std::move(rows));
        } else {
            beginResetModel();
            rows_ = std::move(rows);
            endResetModel();
        }
        if (rows_.size() != oldCount) {
            Q_EMIT countChanged();
        }
    }

private:
    [[nodiscard]] std::optional<Steps> stepsTo(const std::vector<Row>& rows) const {
        std::unordered_map<std::decay_t<decltype(rows.front().key())>, std::size_t> newPlaces;
        newPlaces.reserve(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            newPlaces.emplace(rows[i].key(), i);
        }
        std::vector<std::optional<std::size_t>> places;
        places.reserve(rows_.size());
        for (const Row& old : rows_) {
            const auto found = newPlaces.find(old.key());
            places.push_back(
                found == newPlaces.end() ? std::nullopt : std::optional{found->second});
        }
        return steps(places, rows.size());
    }

    void apply(const Steps& changes, const std::vector<Row>& rows) {
        for (const Run& run : changes.removals) {
            beginRemoveRows({}, run.first, run.last);
            rows_.erase(rows_.begin() + run.first, rows_.begin() + run.last + 1);
            endRemoveRows();
        }
        for (const Run& run : changes.insertions) {
            beginInsertRows({}, run.first, run.last);
            rows_.insert(
                rows_.begin() + run.first, rows.begin() + run.first, rows.begin() + run.last + 1);
            endInsertRows();
        }
    }

    /// Takes the new content of rows that have their places already.
    void tellChanged(std::vector<Row> rows) {
        std::vector<Run> runs;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const int place = static_cast<int>(i);
            if (rows_[i] == rows[i]) {
                continue;
            }
            if (!runs.empty() && runs.back().last == place - 1) {
                runs.back().last = place;
            } else {
                runs.push_back({.first = place, .last = place});
            }
        }
        rows_ = std::move(rows);
        for (const Run& run : runs) {
            Q_EMIT dataChanged(index(run.first), index(run.last));
        }
    }

    const std::vector<Role> roles_;
    std::vector<Row> rows_;
};

}  // namespace Brimlo
