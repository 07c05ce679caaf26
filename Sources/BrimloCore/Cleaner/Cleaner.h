#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Cleaner/DisposalMode.h"
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

    /// Carries a plan out, item by item in its order: asks the safety gate again, moves the item
    /// to the Trash of its volume and records it in the journal before the next one is touched.
    /// An item that is refused or fails does not end the run. A dry run asks the gate alone.
    ///
    /// A "docker:" pseudo path is no matter for the gate and the Trash: Docker removes the object
    /// for good, or refuses to.
    [[nodiscard]] CleanReport execute(
        const CleanPlan& plan, DisposalMode mode, bool dryRun, const Progress& progress = {});

    /// "device:inode" of the entry at a path, a link's own; nullopt when there is none.
    [[nodiscard]] static std::optional<std::string> identity(const std::string& path);

    /// Puts an item back where it was and returns that path. Never overwrites.
    ///
    /// Fails with code 1 of the domain "Brimlo" when something is there, with code 2 when the item
    /// is no longer in the Trash, and with the system's error when the move fails.
    [[nodiscard]] std::expected<std::string, Error> undo(const JournalEntry& entry);

    /// Deletes the journal's own items from the home Trash that are older than so many days;
    /// returns their bytes. Only what is provably the item that was put there goes. A dry run
    /// deletes nothing, but marks what it finds gone.
    [[nodiscard]] std::int64_t purgeOwnTrash(std::int64_t olderThanDays, bool dryRun);

    /// The bytes in the home Trash.
    [[nodiscard]] static std::int64_t trashSize();

    /// Deletes all that is in the home Trash, the program's items and all others; returns the
    /// bytes measured before. Ends at the first failure.
    [[nodiscard]] static std::expected<std::int64_t, Error> emptyTrash();

private:
    void removeFromDocker(const CleanItem& item, const Uuid& batchID, CleanReport& report);
    void dispose(
        const CleanItem& item,
        const Safety::Verdict& verdict,
        const Uuid& batchID,
        CleanReport& report);

    std::shared_ptr<Journal> journal_;
    DockerClient::Places docker_;
};

}  // namespace Brimlo
