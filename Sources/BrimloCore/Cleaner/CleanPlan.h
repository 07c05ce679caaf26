#pragma once

#include "BrimloCore/DiskScanner/FreedSpace.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
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
    /// What Docker calls its object, or the name of the suggestion; absent for what a person chose.
    std::optional<std::string> title = std::nullopt;
    SharedFiles shared = nullptr;  ///< What of it may stay when it goes, as far as that is known.
    /// The equal file that stays. The item goes only if the two are still equal then.
    std::optional<std::string> copyOf = std::nullopt;

    bool operator==(const CleanItem&) const = default;

    /// Its path, or the name of Docker's object: "Docker image shop:3 (ab12)".
    [[nodiscard]] std::string name() const;
};

/// The figures of items that are to go, and how they are told. Each step takes as long as the item
/// has shared files.
struct CleanFigures {
    std::int64_t count = 0;
    std::int64_t bytes = 0;       ///< What the items take.
    std::int64_t finalCount = 0;  ///< Of these, what is deleted for good: Docker's objects.
    std::int64_t finalBytes = 0;
    FreedSpace freed;  ///< What is free once all of them are gone, the Trash emptied.

    bool operator==(const CleanFigures&) const = default;

    /// `Item` has a path, a size and what of it is shared.
    template <typename Item>
    void add(const Item& item) {
        step(item.path, item.size, 1);
        freed.add(item);
    }
    /// Takes back an `add`.
    template <typename Item>
    void remove(const Item& item) {
        step(item.path, item.size, -1);
        freed.remove(item);
    }

    [[nodiscard]] std::int64_t trashBytes() const { return bytes - finalBytes; }
    /// What is free at least once the Trash is emptied, besides what goes for good.
    [[nodiscard]] std::int64_t freedFromTrash() const { return freed.atLeast() - finalBytes; }

    /// "5 MB", "1.52 GB for good" or "5.2 GB (1.52 GB for good)", followed by ", frees 3 MB" where
    /// that is less.
    [[nodiscard]] std::string amount() const;

    /// "Goes to Trash first · undo anytime", "1.52 GB for good, the rest to Trash" or "1.52 GB for
    /// good".
    [[nodiscard]] std::string destination() const;

    /// "2 items (1.52 GB) go for good and cannot be put back."; empty if nothing does.
    [[nodiscard]] std::string warning() const;

private:
    void step(std::string_view path, std::int64_t size, int sign);
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

    [[nodiscard]] CleanFigures figures() const;

    /// The plan with what of its items may stay, for those that a person chose by hand. Measures in
    /// parallel, except what the gate refuses. Blocks.
    [[nodiscard]] CleanPlan measured() const;

    /// The plan without the items at these paths.
    [[nodiscard]] CleanPlan without(const std::set<std::string>& paths) const;

private:
    std::vector<CleanItem> items_;
    std::vector<std::string> dropped_;
};

/// Whether a path stands for a Docker object and not for a file.
[[nodiscard]] bool isPseudoPath(std::string_view path);

}  // namespace Brimlo
