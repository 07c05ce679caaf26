#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Support/Uuid.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

/// One item of an operation, and why it failed.
struct ItemProblem {
    std::string path;                                 ///< As the caller spelled it.
    std::string reason;                               ///< Without a period at its end.
    std::optional<std::string> title = std::nullopt;  ///< That of the `CleanItem`.

    bool operator==(const ItemProblem&) const = default;

    /// "path: reason".
    [[nodiscard]] std::string text() const { return path + ": " + reason; }
};

/// The result of a clean, or of its dry run.
struct CleanReport {
    std::int64_t movedToTrashBytes = 0;   ///< Of the items that went to the Trash, as planned.
    std::int64_t freedNowBytes = 0;       ///< Of the items that are gone at once: Docker objects.
    std::vector<ItemProblem> failures;    ///< Items that could not be removed.
    std::vector<ItemProblem> refused;     ///< Items that the safety gate refused.
    std::vector<ItemProblem> unrecorded;  ///< Items that were removed without a journal entry.
    std::vector<std::string> notes;       ///< For callers to add to.
    std::vector<CleanItem>
        goneForGood;               ///< Docker objects that are gone: no undo brings them back.
    std::vector<Uuid> journalIDs;  ///< Of the journal entries written, in order.
    std::int64_t processed = 0;    ///< Items removed, or that a dry run would remove.
    std::vector<std::string> untouched;  ///< Paths not reached: the clean was stopped.

    bool operator==(const CleanReport&) const = default;

    /// The paths of the items that are still where they were.
    [[nodiscard]] std::set<std::string> stayed() const {
        std::set<std::string> paths{untouched.begin(), untouched.end()};
        for (const auto* problems : {&failures, &refused}) {
            for (const ItemProblem& problem : *problems) {
                paths.insert(problem.path);
            }
        }
        return paths;
    }

    /// Whether the journal has an entry of an item that went to the Trash.
    [[nodiscard]] bool canUndo() const;

    /// Whether that is all that was removed.
    [[nodiscard]] bool canUndoAll() const {
        return canUndo() && goneForGood.empty() && unrecorded.empty();
    }

    /// Whether an item stayed, or was removed without a journal entry.
    [[nodiscard]] bool hasProblems() const {
        return !failures.empty() || !refused.empty() || !unrecorded.empty();
    }
};

/// The result of deleting from the Trash for good, or of its dry run.
struct TrashReport {
    std::int64_t bytes = 0;  ///< Bytes of the items deleted.
    std::optional<std::int64_t> freedBytes =
        std::nullopt;                   ///< What of them is free for sure, where that is known.
    std::int64_t removed = 0;           ///< Items that are gone.
    std::vector<ItemProblem> failures;  ///< Items still there, by their path in the Trash.

    bool operator==(const TrashReport&) const = default;

    /// "frees at least 3 MB" where that is less than the bytes; else empty.
    [[nodiscard]] std::string frees() const;

    /// The result of a purge: "Permanently removed 5 MB that Brimlo had moved to Trash.", followed
    /// by how many items are left and why.
    [[nodiscard]] std::string purgedSentence(bool dryRun) const;

    /// The result of deleting chosen items: "Deleted 5 MB for good.", with what is left and why.
    [[nodiscard]] std::string deletedSentence() const;

    /// The result of emptying: "Emptied Trash: freed 5 MB.", with "at least" where more may be
    /// freed, or why something is left.
    [[nodiscard]] std::string emptiedSentence() const;
};

/// The result of restoring items.
struct UndoReport {
    std::vector<std::string> restored;    ///< The paths of the restored items, newest first.
    std::vector<ItemProblem> failures;    ///< Items that were not restored.
    std::vector<ItemProblem> unrecorded;  ///< Restored items not marked so in the journal.

    bool operator==(const UndoReport&) const = default;

    [[nodiscard]] bool hasProblems() const { return !failures.empty() || !unrecorded.empty(); }

    /// "Restored 2 item(s).", followed by the first problem, if any.
    [[nodiscard]] std::string sentence() const;
};

}  // namespace Brimlo
