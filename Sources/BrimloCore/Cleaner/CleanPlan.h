#pragma once

#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// One thing to dispose of.
struct CleanItem {
    std::string path;                   ///< Absolute, or a "docker:" pseudo path.
    std::int64_t size = 0;              ///< Allocated bytes that its disposal is expected to free.
    std::optional<std::string> ruleID;  ///< The rule that proposed it; absent for manual choices.
    std::optional<Risk> risk;           ///< That rule's rating.
    /// What Docker calls its object; absent for a file.
    std::optional<std::string> title = std::nullopt;

    bool operator==(const CleanItem&) const = default;
};

/// How items are disposed of: there is one way, and none deletes files for good.
enum class DisposalMode { trash };

/// The items of a clean: no path twice, and no item inside another.
class CleanPlan {
public:
    /// Keeps the first item of each path and drops those that lie inside another item. Paths
    /// compare in canonical form; the items keep the spelling they came with.
    explicit CleanPlan(const std::vector<CleanItem>& items);

    /// Whether an item of a suggestion is meant.
    using Choice = std::function<bool(const Suggestion&, const SuggestionItem&)>;

    /// The chosen items of the suggestions, each with its rule and rating.
    [[nodiscard]] static CleanPlan of(
        const std::vector<Suggestion>& suggestions, const Choice& isMeant);

    /// The items at these paths, in canonical form: what is shown for review is what will be
    /// judged. A path that the system reads differently stays as it is, to be refused. Measures in
    /// parallel, except what the gate refuses. Before them come the `others`. Blocks.
    [[nodiscard]] static CleanPlan at(
        const std::vector<std::string>& paths, std::vector<CleanItem> others = {});

    bool operator==(const CleanPlan&) const = default;

    /// The shortest canonical path first.
    [[nodiscard]] const std::vector<CleanItem>& items() const { return items_; }

    /// The paths of the items left out because they lie inside another.
    [[nodiscard]] const std::vector<std::string>& dropped() const { return dropped_; }

    /// The sum of the items' sizes in bytes.
    [[nodiscard]] std::int64_t totalBytes() const;

    /// The part of `totalBytes` that is deleted for good: Docker's objects.
    [[nodiscard]] std::int64_t finalBytes() const;

    /// Whether any item goes for good.
    [[nodiscard]] bool hasFinalItems() const;

private:
    std::vector<CleanItem> items_;
    std::vector<std::string> dropped_;
};

/// Whether a path stands for a Docker object and not for a file.
[[nodiscard]] bool isPseudoPath(std::string_view path);

}  // namespace Brimlo
