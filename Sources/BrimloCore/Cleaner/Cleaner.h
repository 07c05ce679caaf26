#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Cleaner/DisposalMode.h"
#include "BrimloCore/Cleaner/TrashReport.h"
#include "BrimloCore/Cleaner/UndoReport.h"
#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Support/Journal.h"
#include "BrimloCore/Support/Safety.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// The one place where a user's file leaves its location, and the ways back and out.
///
/// Each call blocks and does its work on the calling thread. Any number of runs may be made with
/// one object, from any thread.
class Cleaner {
public:
    /// Told each path that the gate let through, before it is moved.
    using Progress = std::function<void(const std::string& path)>;

    /// `docker` is where Docker's tool may be.
    explicit Cleaner(
        std::shared_ptr<Journal> journal,
        DockerClient::Places docker = DockerClient::usualPlaces());

    /// What becomes of an item that the journal can't record, for another reason than a full disk:
    /// somebody who watches may let it go all the same, and the report names it.
    enum class Unrecorded { goes, stays };

    /// Carries a plan out, item by item in its order: asks the safety gate again, moves the item
    /// to the Trash of its volume and records it in the journal before the next one is touched.
    /// An item that is refused or fails does not end the run. A dry run asks the gate alone.
    ///
    /// A "docker:" pseudo path is no matter for the gate and the Trash: Docker removes the object
    /// for good, or refuses to.
    [[nodiscard]] CleanReport execute(
        const CleanPlan& plan,
        DisposalMode mode,
        bool dryRun,
        const Progress& progress = {},
        Unrecorded unrecorded = Unrecorded::goes);

    /// Where Docker's tool may be.
    [[nodiscard]] const DockerClient::Places& docker() const { return docker_; }

    /// "device:inode" of the entry at a path, a link's own; nullopt when there is none.
    [[nodiscard]] static std::optional<std::string> identity(const std::string& path);

    /// Whether the journal can be written, so that what goes can be recorded.
    [[nodiscard]] std::expected<void, Error> checkJournal() { return journal_->checkWritable(); }

    /// The journal's entries, the newest first, as the Trash shows them: one whose item is no
    /// longer there has `purgedFromTrash` set, here and not in the file. An item on a volume that
    /// is not there counts as in the Trash. Looks at each item. Fails when the journal can't be
    /// read.
    [[nodiscard]] std::expected<std::vector<JournalEntry>, Error> history();

    /// Puts the items of these journal entries back where they were, the newest first, and tells of
    /// each that did not come back why. Never overwrites; takes items from a Trash alone. Entries
    /// that are undone already are passed over. When the journal can't be read, nothing comes back,
    /// and the one failure names the journal.
    [[nodiscard]] UndoReport undo(const std::vector<Uuid>& ids);

    /// Deletes the journal's own items from the home Trash that are older than so many days. Only
    /// what is provably the item that was put there goes. A dry run deletes nothing, but marks what
    /// it finds gone.
    [[nodiscard]] TrashReport purgeOwnTrash(std::int64_t olderThanDays, bool dryRun);

    /// The bytes in the home Trash.
    [[nodiscard]] static std::int64_t trashSize();

    /// Deletes all that is in the home Trash, the program's items and all others. The bytes are
    /// those measured before, less those of what could not be deleted.
    [[nodiscard]] static TrashReport emptyTrash();

private:
    void removeFromDocker(const CleanItem& item, const Uuid& batchID, CleanReport& report);
    void dispose(
        const CleanItem& item,
        const Safety::Verdict& verdict,
        const Uuid& batchID,
        Unrecorded unrecorded,
        CleanReport& report);
    [[nodiscard]] static std::expected<std::string, Error> putBack(const JournalEntry& entry);

    std::shared_ptr<Journal> journal_;
    DockerClient::Places docker_;
};

}  // namespace Brimlo
