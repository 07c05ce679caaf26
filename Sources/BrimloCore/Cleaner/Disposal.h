#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Cleaner/ComparedCopy.h"
#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Journal/Journal.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Support/Uuid.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Brimlo {

/// The moves of a clean to the Trash, in groups that share their syncs. Used by `Cleaner` alone.
///
/// The steps of a group: each item is judged by the gate, found, compared with the copy that stays
/// if it is an extra of equal files, and given its trashinfo file;
/// these files are synced; the journal announces the group, synced; item by item the gate judges
/// again, both copies must be as they were compared, and the item moves; the folders are synced;
/// the journal records what moved. A clean that is stopped moves no further item of the group. If
/// the process dies, or the power fails, each item is in one of its two places, and what is in the
/// Trash has its trashinfo file and its announcement.
///
/// After its last verdict nothing about an item is resolved or looked up again. If a parent becomes
/// a symlink meanwhile, or another item takes the place, the move fails.
class Disposal {
public:
    Disposal(
        Journal& journal, const CleanOptions& options, const Uuid& batchID, CleanReport& report);

    /// The verdict on an item that may go; nullopt, and a line in the report, if it must stay.
    [[nodiscard]] static std::optional<Safety::Verdict> judge(
        const CleanItem& item, const Safety::Gate& gate, CleanReport& report);

    /// Moves items, in order, and reports on each.
    void move(std::span<const CleanItem> items);

private:
    /// An item that is ready to move.
    struct Leaving {
        const CleanItem* item = nullptr;
        Platform::TrashMove::Request request;
        Platform::TrashMove move;
        JournalEntry entry;
        std::optional<ComparedCopy> copy;  ///< Of an item that has a copy that stays.
        bool isAnnounced = false;          ///< Whether the entry is as it was announced.
    };
    enum class Outcome { moved, stays, again };

    /// What is shared by the items of a group.
    struct Group;

    [[nodiscard]] std::vector<const CleanItem*> moveGroup(
        const std::vector<const CleanItem*>& items, bool isLastTry);
    [[nodiscard]] std::optional<Leaving> prepare(const CleanItem& item, Group& group);
    [[nodiscard]] bool compare(
        const CleanItem& item, const std::string& path, std::optional<ComparedCopy>& copy);
    [[nodiscard]] bool announce(const std::vector<Leaving>& leaving, Group& group);
    [[nodiscard]] Outcome commit(Leaving& leaving, Group& group, bool isLastTry);
    [[nodiscard]] bool isStopped() const { return options_.isStopped && options_.isStopped(); }
    void record(const std::vector<Leaving>& moved, Group& group);
    void fail(const CleanItem& item, std::string reason);

    Journal& journal_;
    const CleanOptions& options_;
    Uuid batchID_;
    CleanReport& report_;
};

}  // namespace Brimlo
