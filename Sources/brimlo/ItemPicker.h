#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/ItemGroups.h"
#include "BrimloCore/Models/Suggestion.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

/// The suggestions as a list to tick, without a screen: the rows, the cursor, and the sums of what
/// is ticked. At first what is preselected is ticked.
class ItemPicker {
public:
    /// A suggestion, or a line of its items.
    struct Row {
        const Suggestion* suggestion = nullptr;
        std::optional<ItemGroup> group;  ///< Absent for the suggestion itself.

        [[nodiscard]] std::int64_t size() const {
            return group ? group->size : suggestion->totalSize();
        }
    };
    enum class Key { up, down, pageUp, pageDown, first, last, toggle };
    enum class Mark { none, some, all };

    explicit ItemPicker(std::vector<Suggestion> suggestions);
    ItemPicker(const ItemPicker&) = delete;
    ItemPicker& operator=(const ItemPicker&) = delete;

    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    [[nodiscard]] std::size_t cursor() const { return cursor_; }
    [[nodiscard]] Mark mark(const Row& row) const;
    [[nodiscard]] const CleanFigures& figures() const { return figures_; }

    /// The first row of a screen of so many rows, with the cursor on it; moves as little as it can.
    [[nodiscard]] std::size_t top(std::size_t height);

    /// Moves the cursor, or ticks all items of its row, or none if all were ticked. A page has
    /// `height` rows.
    void press(Key key, std::size_t height);

    /// The ticked items.
    [[nodiscard]] CleanPlan plan() const;

private:
    [[nodiscard]] std::vector<const SuggestionItem*> items(const Row& row) const;
    void toggle(const Row& row);

    const std::vector<Suggestion> suggestions_;
    std::vector<Row> rows_;
    std::size_t cursor_ = 0;
    std::size_t top_ = 0;
    std::set<std::string> ticked_;
    CleanFigures figures_;
};

}  // namespace Brimlo
