#include "BrimloApp/Review/PlanGroup.h"

#include "BrimloCore/Cleaner/ItemGroups.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace Brimlo {

namespace {

using Fate = PlanLine::Fate;

/// The suggestion and the item of a path.
struct Origin {
    const Suggestion* suggestion;
    const SuggestionItem* item;
};
using Origins = std::unordered_map<std::string_view, Origin>;

Origins originsIn(const std::vector<Suggestion>& suggestions) {
    Origins origins;
    for (const Suggestion& suggestion : suggestions) {
        for (const SuggestionItem& item : suggestion.items) {
            origins.try_emplace(item.path, Origin{.suggestion = &suggestion, .item = &item});
        }
    }
    return origins;
}

PlanLine lineOf(const CleanItem& item, const Origins& origins) {
    const bool isDocker = isPseudoPath(item.path);
    PlanLine row{
        .path = item.path,
        .title = item.name(),
        .subtitle = item.copyOf ? "Copy of " + *item.copyOf + ", which stays" : "",
        .reason = {},
        .size = item.size,
        .shared = item.shared};
    row.mayBeOwn = item.risk.value_or(Risk::review) == Risk::review;
    if (const auto known = origins.find(item.path); known != origins.end()) {
        const auto& [suggestion, found] = known->second;
        // An item that will be gone for good is called by its own name.
        row.title = isDocker ? row.title : suggestion->name;
        row.subtitle = isDocker ? suggestion->name + " · " + found->subtitle.value_or("")
                                : found->subtitle.value_or(item.path);
    }
    return row;
}

PlanLine innerLineOf(const CleanItem& item, const Origins& origins) {
    PlanLine row = lineOf(item, origins);
    row.title =
        row.subtitle == row.path ? std::string{Path::name(row.path)} : std::move(row.subtitle);
    row.subtitle.clear();
    row.isInFolder = true;
    return row;
}

PlanGroup groupOf(
    const ItemGroup& together, const std::vector<CleanItem>& items, const Origins& origins) {
    PlanGroup group{
        .head = lineOf(items[together.items.front()], origins),
        .items = {},
        .ticks = std::vector<bool>(together.items.size())};
    if (!together.isFolder()) {
        group.items.push_back(group.head);
        return group;
    }
    group.head.path = together.folder;
    group.head.subtitle = together.folder;
    group.head.size = together.size;
    group.head.itemCount = static_cast<std::int64_t>(together.items.size());
    for (const std::size_t place : together.items) {
        group.items.push_back(innerLineOf(items[place], origins));
    }
    return group;
}

/// Items of one fate, and of one reason if they stay.
using Alike = std::pair<Fate, std::string>;

std::map<Alike, std::vector<CleanItem>> byFate(
    const CleanPlan& plan, const CleanReport& rehearsal) {
    std::unordered_map<std::string_view, std::string_view> reasons;
    for (const auto* problems : {&rehearsal.refused, &rehearsal.failures}) {
        for (const ItemProblem& problem : *problems) {
            reasons.emplace(problem.path, problem.reason);
        }
    }
    std::map<Alike, std::vector<CleanItem>> parts;
    for (const CleanItem& item : plan.items()) {
        const auto found = reasons.find(item.path);
        const Fate fate = found != reasons.end()    ? Fate::stays
                          : isPseudoPath(item.path) ? Fate::forGood
                                                    : Fate::trash;
        parts[{fate, std::string{fate == Fate::stays ? found->second : ""}}].push_back(item);
    }
    return parts;
}

}  // namespace

std::vector<PlanGroup> PlanGroup::of(
    const CleanPlan& plan,
    const std::vector<Suggestion>& suggestions,
    const CleanReport& rehearsal) {
    const Origins origins = originsIn(suggestions);
    std::vector<PlanGroup> groups;
    for (const auto& [alike, items] : byFate(plan, rehearsal)) {
        for (const ItemGroup& together : grouped(items)) {
            PlanGroup group = groupOf(together, items, origins);
            group.head.fate = alike.first;
            group.head.reason = alike.second;
            groups.push_back(std::move(group));
        }
    }
    std::ranges::stable_sort(groups, {}, [](const PlanGroup& group) {
        return std::pair{group.head.fate, -group.head.size};
    });
    for (std::size_t i = 0; i < groups.size(); ++i) {
        PlanGroup& group = groups[i];
        group.head.group = i;
        for (std::size_t item = 0; item < group.items.size(); ++item) {
            PlanLine& line = group.items[item];
            line.fate = group.head.fate;
            line.reason = group.head.reason;
            line.group = i;
            line.item = item;
        }
    }
    return groups;
}

}  // namespace Brimlo
