#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Cleaner/TrashContents.h"
#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Journal/Journal.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace Brimlo {

/// What a clean asks its caller, on its own thread and without a lock held by it.
struct CleanOptions {
    /// Called with each item that passed the gate, before it is moved.
    std::function<void(const CleanItem& item)> progress;

    /// Asked before each item; true ends the clean there. Also asked while the journal is locked.
    std::function<bool()> isStopped;

    /// What to do with an item that the journal can't record, for a reason other than a full disk.
    /// When a person reads the report, which names the item, it may go all the same.
    enum class Unrecorded { goes, stays } unrecorded = Unrecorded::goes;
};

/// Moves items to the Trash, restores them, and deletes them from the Trash: the only code that
/// moves a user's file away.
///
/// Each call blocks and does its work on the calling thread. Any number of runs may be made with
/// one object, from any thread.
class Cleaner {
public:
    /// `docker` is where Docker's tool may be.
    explicit Cleaner(
        std::shared_ptr<Journal> journal,
        DockerClient::Places docker = DockerClient::usualPlaces());

    /// Carries a plan out in order (see `Disposal`): asks the safety gate again for each item,
    /// moves the item to the Trash of its volume and records it in the journal. A refused or failed
    /// item does not end the run. A dry run tells which items would stay, and why, as far as that
    /// is known before: by the gate's verdict, or because the item is gone. An extra of equal files
    /// goes only if all its bytes are those of the copy that stays, read at that time.
    ///
    /// "docker:" pseudo paths skip the gate and the Trash: Docker removes the object for good, or
    /// refuses.
    [[nodiscard]] CleanReport execute(
        const CleanPlan& plan, DisposalMode mode, bool dryRun, const CleanOptions& options = {});

    /// Where Docker's tool may be.
    [[nodiscard]] const DockerClient::Places& docker() const { return docker_; }

    /// "device:inode" of the entry at a path, a link's own; nullopt when there is none.
    [[nodiscard]] static std::optional<std::string> identity(const std::string& path);

    /// Whether the journal is writable, so that removals can be recorded.
    [[nodiscard]] std::expected<void, Error> checkJournal() { return journal_->checkWritable(); }

    /// The journal's entries, newest first, checked against the Trash: one whose item is no longer
    /// there has `purgedFromTrash` set, here and not in the file. An item on a volume that is not
    /// mounted counts as in the Trash. Looks up each item. Fails when the journal can't be read.
    [[nodiscard]] std::expected<std::vector<JournalEntry>, Error> history();

    /// Restores the items of these journal entries, newest first, and gives a reason for each that
    /// did not come back. Never overwrites, and takes items only from a Trash. Entries already
    /// undone are skipped. When the journal can't be read, nothing is restored, and the one failure
    /// names the journal.
    [[nodiscard]] UndoReport undo(const std::vector<Uuid>& ids);

    /// What lies in the user's Trashes. Measures each item. Fails when the journal, which tells
    /// Brimlo's own items, can't be read.
    [[nodiscard]] std::expected<TrashContents, Error> trashContents();

    /// Restores items of the Trash: Brimlo's own as `undo` does, others to where their Trash says
    /// that they were. Never overwrites.
    [[nodiscard]] UndoReport restore(const std::vector<TrashContents::Item>& items);

    /// Deletes items of the Trash for good, whoever put them there, each only if it is still the
    /// same.
    [[nodiscard]] TrashReport purge(const std::vector<TrashContents::Item>& items);

    /// Deletes items that Brimlo put in the home Trash more than this many days ago. Only what is
    /// provably the item that was put there is deleted. A dry run deletes nothing, but marks what
    /// it finds gone.
    [[nodiscard]] TrashReport purgeOwnTrash(std::int64_t olderThanDays, bool dryRun);

    /// What the home Trash takes.
    [[nodiscard]] static SpaceUse trashUse();

    /// Deletes everything in the home Trash, whoever put it there. The bytes are those measured
    /// before, minus those of what could not be deleted, and what of them is freed for sure. A dry
    /// run deletes nothing.
    [[nodiscard]] static TrashReport emptyTrash(bool dryRun = false);

private:
    static void rehearse(
        const CleanItem& item,
        const Safety::Gate& gate,
        const CleanOptions& options,
        CleanReport& report);
    void removeFromDocker(
        const CleanItem& item,
        const CleanOptions& options,
        const Uuid& batchID,
        CleanReport& report);
    void putBackTogether(std::span<const JournalEntry> entries, UndoReport& report);
    [[nodiscard]] static std::expected<Platform::FileIdentity, Error> findToReturn(
        const JournalEntry& entry);
    [[nodiscard]] static std::expected<std::string, Error> putBack(
        const std::string& trashPath,
        const Platform::FileIdentity& identity,
        const std::string& originalPath);
    void markPurged(const std::set<Uuid>& gone);

    std::shared_ptr<Journal> journal_;
    DockerClient::Places docker_;
};

}  // namespace Brimlo
