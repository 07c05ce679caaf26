#pragma once

#include "BrimloCore/Journal/JournalEntry.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Support/Files.h"

#include <expected>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

/// The persistent record of every disposal, shared with the other processes of the user.
///
/// Keeps no entries in memory: the file is the only copy, and each change is an exclusive
/// read-modify-write of the whole file. Locks the threads of this process first, then the other
/// processes, through `path` + ".lock". A damaged file is copied to `path` + ".corrupt" and read as
/// far as possible. Any thread; each call blocks while another process holds the lock.
class Journal {
    /// Excludes the other threads, then the other processes.
    struct Lock {
        std::unique_lock<std::mutex> threads;
        FileLock processes;  ///< Without it only the threads' lock is held.
    };

public:
    /// An entry that is on disk but not yet in the journal, with the locks held. Dropped, it leaves
    /// the journal unchanged.
    class Pending {
    public:
        /// Publishes the journal with `entry`. Costs no more than a rename when `entry` is the
        /// prepared one; a different one is written anew. On failure the journal is unchanged.
        [[nodiscard]] std::expected<void, Error> publish(const JournalEntry& entry) &&;

    private:
        friend class Journal;
        Pending(
            Lock lock,
            std::string path,
            std::string beginning,
            JournalEntry entry,
            AtomicFile file);

        Lock lock_;
        std::string path_;
        std::string beginning_;  ///< The journal's text up to the new entry.
        JournalEntry entry_;     ///< The one prepared.
        AtomicFile file_;
    };

    /// `path` is the journal's file. Nothing is read yet.
    explicit Journal(std::string path);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// All entries that can be decoded, last written first: dates are for people, and two cleans
    /// within a second have the same. A missing file has none; fails when a file is there that
    /// can't be read.
    [[nodiscard]] std::expected<std::vector<JournalEntry>, Error> entries();

    /// Appends an entry. A failure leaves the file unchanged.
    [[nodiscard]] std::expected<void, Error> append(const JournalEntry& entry);

    /// Applies `body` to each entry whose id is in `ids`, in one write. A failure leaves the file
    /// unchanged.
    [[nodiscard]] std::expected<void, Error> update(
        const std::set<Uuid>& ids, const std::function<void(JournalEntry&)>& body);

    /// Whether an entry could be added now: does everything but the last step of a write.
    [[nodiscard]] std::expected<void, Error> checkWritable();

    /// Writes the journal with `entry` at its end to a temporary file, so that only a rename is
    /// left once the item has gone: a full disk shows before the item moves, not after.
    [[nodiscard]] std::expected<Pending, Error> prepare(const JournalEntry& entry);

private:
    [[nodiscard]] Lock lock();
    [[nodiscard]] std::expected<std::vector<JournalEntry>, Error> load() const;
    [[nodiscard]] std::expected<std::string, Error> beginning() const;

    std::mutex mutex_;
    std::string path_;
};

}  // namespace Brimlo
