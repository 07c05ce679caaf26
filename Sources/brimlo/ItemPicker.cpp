#include "brimlo/ItemPicker.h"

#include <algorithm>
#include <utility>

namespace Brimlo {

ItemPicker::ItemPicker(std::vector<Suggestion> suggestions)
    : suggestions_{std::move(suggestions)} {
    for (const Suggestion& suggestion : suggestions_) {
        rows_.push_back({.suggestion = &suggestion, .group = std::nullopt});
        for (ItemGroup& group : grouped(suggestion.items)) {
            rows_.push_back({.suggestion = &suggestion, .group = std::move(group)});
        }
        for (const SuggestionItem& item : suggestion.items) {
            if (suggestion.preselectedPaths.contains(item.path) &&
                ticked_.insert(item.path).second) {
                figures_.add(item);
            }
        }
    }
}

std::vector<const SuggestionItem*> ItemPicker::items(const Row& row) const {
    std::vector<const SuggestionItem*> result;
    if (row.group) {
        for (const std::size_t place : row.group->items) {
            result.push_back(&row.suggestion->items[place]);
        }
        return result;
    }
    for (const SuggestionItem& item : row.suggestion->items) {
        result.push_back(&item);
    }
    return result;
}

ItemPicker::Mark ItemPicker::mark(const Row& row) const {
    const auto all = items(row);
    const auto count = std::ranges::count_if(
        all, [&](const SuggestionItem* item) { return ticked_.contains(item->path); });
    return count == 0 ? Mark::none : std::cmp_equal(count, all.size()) ? Mark::all : Mark::some;
}

std::size_t ItemPicker::top(std::size_t height) {
    const std::size_t shown = std::max<std::size_t>(height, 1);
    const std::size_t last = rows_.size() - std::min(shown, rows_.size());
    const std::size_t lowest = cursor_ + 1 - std::min(shown, cursor_ + 1);
    top_ = std::min(std::clamp(top_, lowest, cursor_), last);
    return top_;
}

void ItemPicker::press(Key key, std::size_t height) {
    if (rows_.empty()) {
        return;
    }
    const std::size_t page = std::max<std::size_t>(height, 1);
    const std::size_t last = rows_.size() - 1;
    switch (key) {
        case Key::up:
            cursor_ -= std::min<std::size_t>(cursor_, 1);
            break;
        case Key::down:
            cursor_ = std::min(cursor_ + 1, last);
            break;
        case Key::pageUp:
            cursor_ -= std::min(cursor_, page);
            break;
        case Key::pageDown:
            cursor_ = std::min(cursor_ + page, last);
            break;
        case Key::first:
            cursor_ = 0;
            break;
        case Key::last:
            cursor_ = last;
            break;
        case Key::toggle:
            toggle(rows_[cursor_]);
            break;
    }
}

void ItemPicker::toggle(const Row& row) {
    const bool unticks = mark(row) == Mark::all;
    for (const SuggestionItem* item : items(row)) {
        if (unticks && ticked_.erase(item->path) == 1) {
            figures_.remove(*item);
        } else if (!unticks && ticked_.insert(item->path).second) {
            figures_.add(*item);
        }
    }
}

CleanPlan ItemPicker::plan() const {
    return CleanPlan::of(suggestions_, [this](const Suggestion&, const SuggestionItem& item) {
        return ticked_.contains(item.path);
    });
}

}  // namespace Brimlo
