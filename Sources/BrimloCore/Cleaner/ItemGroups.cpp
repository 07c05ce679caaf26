#include "BrimloCore/Cleaner/ItemGroups.h"

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

/// `ruleOf` tells items of one folder apart; items without a rule stay single.
template <typename Item, typename RuleOf>
std::vector<ItemGroup> groupsOf(const std::vector<Item>& items, const RuleOf& ruleOf) {
    using Key = std::pair<std::string_view, std::string_view>;
    const auto keyOf = [&](const Item& item) {
        return Key{Path::parent(item.path), ruleOf(item).value_or("")};
    };
    std::map<Key, std::size_t> counts;
    for (const Item& item : items) {
        ++counts[keyOf(item)];
    }
    std::map<Key, std::size_t> places;
    std::vector<ItemGroup> groups;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const Item& item = items[i];
        const Key key = keyOf(item);
        const bool isOneOfMany =
            counts[key] >= kManyItems && ruleOf(item) && !isPseudoPath(item.path);
        const auto known = isOneOfMany ? places.find(key) : places.end();
        if (known != places.end()) {
            ItemGroup& group = groups[known->second];
            group.items.push_back(i);
            group.size = Bytes::sum(group.size, item.size);
            continue;
        }
        if (isOneOfMany) {
            places.emplace(key, groups.size());
        }
        groups.push_back(
            {.folder = isOneOfMany ? std::string{key.first} : "", .items = {i}, .size = item.size});
    }
    for (ItemGroup& group : groups) {
        std::ranges::stable_sort(group.items, std::ranges::greater{}, [&](std::size_t place) {
            return items[place].size;
        });
    }
    std::ranges::stable_sort(groups, std::ranges::greater{}, &ItemGroup::size);
    return groups;
}

}  // namespace

std::vector<ItemGroup> grouped(const std::vector<SuggestionItem>& items) {
    return groupsOf(items, [](const SuggestionItem&) { return std::optional{std::string_view{}}; });
}

std::vector<ItemGroup> grouped(const std::vector<CleanItem>& items) {
    return groupsOf(items, [](const CleanItem& item) {
        return item.ruleID ? std::optional{std::string_view{*item.ruleID}} : std::nullopt;
    });
}

}  // namespace Brimlo
