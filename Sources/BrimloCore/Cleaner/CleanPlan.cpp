#include "BrimloCore/Cleaner/CleanPlan.h"

#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>

namespace Brimlo {

namespace {

struct Keyed {
    std::string key;  ///< The form in which the item's path is compared.
    std::size_t length;
    const CleanItem* item;
};

/// Whether a folder above `key`, the root excepted, is kept.
bool hasKeptAncestor(std::string_view key, const std::unordered_set<std::string_view>& kept) {
    for (std::size_t slash = key.rfind('/'); slash != std::string_view::npos && slash > 0;
         slash = key.rfind('/')) {
        key = key.substr(0, slash);
        if (kept.contains(key)) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string CleanItem::name() const {
    return isPseudoPath(path) ? DockerObject::words(path, title.value_or("")) : path;
}

void CleanFigures::step(std::string_view path, std::int64_t size, int sign) {
    const bool isFinal = isPseudoPath(path);
    count += sign;
    bytes = Bytes::sum(bytes, sign * size);
    finalCount += isFinal ? sign : 0;
    finalBytes = Bytes::sum(finalBytes, isFinal ? sign * size : 0);
}

std::string CleanFigures::amount() const {
    const std::string forGood = Fmt::bytes(finalBytes) + " for good";
    const std::string amount = finalCount == 0       ? Fmt::bytes(bytes)
                               : finalCount == count ? forGood
                                                     : Fmt::bytes(bytes) + " (" + forGood + ")";
    const std::string frees = freed.words();
    return frees.empty() ? amount : amount + ", " + frees;
}

std::string CleanFigures::destination() const {
    if (finalCount == 0) {
        return "Goes to Trash first · undo anytime";
    }
    return Fmt::bytes(finalBytes) +
           (finalCount == count ? " for good" : " for good, the rest to Trash");
}

std::string CleanFigures::warning() const {
    if (finalCount == 0) {
        return {};
    }
    const bool isOne = finalCount == 1;
    return std::to_string(finalCount) + (isOne ? " item (" : " items (") + Fmt::bytes(finalBytes) +
           (isOne ? ") goes" : ") go") + " for good and cannot be put back.";
}

CleanPlan::CleanPlan(const std::vector<CleanItem>& items) {
    std::vector<Keyed> keyed;
    std::unordered_set<std::string> seen;
    for (const CleanItem& item : items) {
        std::string key = isPseudoPath(item.path) ? item.path : Safety::canonical(item.path);
        if (seen.insert(key).second) {
            const std::size_t length = Text::characterCount(key);
            keyed.push_back({std::move(key), length, &item});
        }
    }
    // A folder's key is shorter than the keys of its contents, so the folder comes first.
    std::ranges::stable_sort(keyed, {}, &Keyed::length);
    std::unordered_set<std::string_view> kept;
    for (const Keyed& entry : keyed) {
        if (hasKeptAncestor(entry.key, kept)) {
            dropped_.push_back(entry.item->path);
        } else {
            kept.insert(entry.key);
            items_.push_back(*entry.item);
        }
    }
}

CleanPlan CleanPlan::of(const std::vector<Suggestion>& suggestions, const Choice& isMeant) {
    std::vector<CleanItem> items;
    for (const Suggestion& suggestion : suggestions) {
        for (const SuggestionItem& item : suggestion.items) {
            if (isMeant(suggestion, item)) {
                items.push_back({item.path, item.size, suggestion.id, suggestion.risk});
                items.back().title = isPseudoPath(item.path) ? item.detail : suggestion.name;
                items.back().shared = item.shared;
            }
        }
    }
    return CleanPlan{items};
}

CleanPlan CleanPlan::at(const std::vector<std::string>& paths, std::vector<CleanItem> others) {
    std::vector<CleanItem> items = std::move(others);
    std::vector<std::string> measured;
    const Safety::Gate gate;
    for (const std::string& path : paths) {
        Safety::Verdict verdict = gate.judge(path);
        if (!verdict.refusal && verdict.entry) {
            measured.push_back(std::move(verdict.canonical));
            continue;
        }
        // A path that the system reads differently than its canonical text stays as it is.
        const bool isAmbiguous =
            !verdict.entry && Platform::FileIdentity::of(verdict.canonical).has_value();
        items.push_back({.path = isAmbiguous ? path : verdict.canonical});
    }
    for (SuggestionItem& item : SuggestionEngine::size(measured)) {
        items.push_back(
            {.path = std::move(item.path),
             .size = item.size,
             .ruleID = {},
             .risk = {},
             .shared = std::move(item.shared)});
    }
    return CleanPlan{items};
}

std::int64_t CleanPlan::totalBytes() const {
    return Bytes::total(items_, &CleanItem::size);
}

CleanFigures CleanPlan::figures() const {
    CleanFigures figures;
    for (const CleanItem& item : items_) {
        figures.add(item);
    }
    return figures;
}

CleanPlan CleanPlan::measured() const {
    CleanPlan plan = *this;
    const Safety::Gate gate;
    std::vector<CleanItem*> meant;
    std::vector<std::string> paths;
    for (CleanItem& item : plan.items_) {
        if (!item.ruleID && !isPseudoPath(item.path) && !gate.judge(item.path).refusal) {
            meant.push_back(&item);
            paths.push_back(item.path);
        }
    }
    const std::vector<SuggestionItem> found = SuggestionEngine::size(paths);
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (found[i].shared) {
            meant[i]->size = found[i].size;
            meant[i]->shared = found[i].shared;
        }
    }
    return plan;
}

CleanPlan CleanPlan::without(const std::set<std::string>& paths) const {
    CleanPlan rest = *this;
    std::erase_if(rest.items_, [&](const CleanItem& item) { return paths.contains(item.path); });
    return rest;
}

bool isPseudoPath(std::string_view path) {
    return path.starts_with("docker:");
}

}  // namespace Brimlo
