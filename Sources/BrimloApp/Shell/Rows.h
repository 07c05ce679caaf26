#pragma once

#include "BrimloApp/Shell/RowList.h"
#include "BrimloApp/Shell/RowSteps.h"
#include "BrimloCore/Support/Uuid.h"

#include <QtCore/QVariant>

#include <cstddef>
#include <cstring>
#include <functional>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

/// Lets rows be known by an identifier.
template <>
struct std::hash<Brimlo::Uuid> {
    std::size_t operator()(const Brimlo::Uuid& id) const noexcept {
        std::size_t first = 0;  // The bytes are random already.
        std::memcpy(&first, id.bytes.data(), sizeof(first));
        return first;
    }
};

namespace Brimlo {

/// The rows that a list shows, as values. Main thread.
///
/// A row has `operator==` and a `key()` that can be hashed and that no other row has: rows of one
/// key are the same row, changed or not. The values of the roles are made when a view asks for
/// them, so that a long list costs no more than what is seen of it.
template <typename Row>
class Rows final : public RowList::Content {
public:
    /// A role's name and how its value is read off a row.
    struct Role {
        const char* name;
        std::function<QVariant(const Row&)> value;
    };

    /// The rows of `list`, which must outlive them.
    Rows(RowList& list, std::vector<Role> roles)
        : list_{list}
        , roles_{std::move(roles)} {
        list_.content_ = this;
    }
    ~Rows() { list_.content_ = nullptr; }

    Q_DISABLE_COPY_MOVE(Rows)

    [[nodiscard]] const std::vector<Row>& all() const { return rows_; }

    /// The row at a place; null when there is none.
    [[nodiscard]] const Row* at(const int place) const {
        return place >= 0 && place < count() ? &rows_[static_cast<std::size_t>(place)] : nullptr;
    }

    /// Replaces the rows, and tells the view of no more than what differs.
    void set(std::vector<Row> rows) {
        const std::size_t oldCount = rows_.size();
        if (const auto steps = stepsTo(rows)) {
            apply(*steps, rows);
            tellChanged(std::move(rows));
        } else {
            list_.beginResetModel();
            rows_ = std::move(rows);
            list_.endResetModel();
        }
        if (rows_.size() != oldCount) {
            Q_EMIT list_.countChanged();
        }
    }

    [[nodiscard]] int count() const override { return static_cast<int>(rows_.size()); }

    [[nodiscard]] QVariant value(const int row, const int role) const override {
        const Row* const found = at(row);
        const auto number = static_cast<std::size_t>(role);  // Other roles are beyond all.
        return found != nullptr && number < roles_.size() ? roles_[number].value(*found)
                                                          : QVariant{};
    }

    [[nodiscard]] std::vector<const char*> roles() const override {
        std::vector<const char*> names;
        names.reserve(roles_.size());
        for (const Role& role : roles_) {
            names.push_back(role.name);
        }
        return names;
    }

private:
    using Run = RowSteps::Run;

    [[nodiscard]] std::optional<RowSteps> stepsTo(const std::vector<Row>& rows) const {
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
        return RowSteps::between(places, rows.size());
    }

    void apply(const RowSteps& steps, const std::vector<Row>& rows) {
        for (const Run& run : steps.removals) {
            list_.beginRemoveRows({}, run.first, run.last);
            rows_.erase(rows_.begin() + run.first, rows_.begin() + run.last + 1);
            list_.endRemoveRows();
        }
        for (const Run& run : steps.insertions) {
            list_.beginInsertRows({}, run.first, run.last);
            rows_.insert(
                rows_.begin() + run.first, rows.begin() + run.first, rows.begin() + run.last + 1);
            list_.endInsertRows();
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
            Q_EMIT list_.dataChanged(list_.index(run.first), list_.index(run.last));
        }
    }

    RowList& list_;
    const std::vector<Role> roles_;
    std::vector<Row> rows_;
};

}  // namespace Brimlo
