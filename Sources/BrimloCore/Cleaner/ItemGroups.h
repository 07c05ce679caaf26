#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Models/Suggestion.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// Items that are shown as one line: many of one rule in one folder, or a single one.
struct ItemGroup {
    std::string folder;              ///< Empty for a single item.
    std::vector<std::size_t> items;  ///< Their places in the list, largest item first.
    std::int64_t size = 0;

    [[nodiscard]] bool isFolder() const { return !folder.empty(); }
};

/// From so many on, the items of a rule in a folder are shown as one.
inline constexpr std::size_t kManyItems = 20;

/// The groups of a suggestion's items, and of a plan's, the largest first. What a person chose and
/// Docker's objects stay single.
[[nodiscard]] std::vector<ItemGroup> grouped(const std::vector<SuggestionItem>& items);
[[nodiscard]] std::vector<ItemGroup> grouped(const std::vector<CleanItem>& items);

}  // namespace Brimlo
