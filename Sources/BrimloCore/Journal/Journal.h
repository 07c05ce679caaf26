#pragma once

#include "BrimloCore/Journal/JournalEntry.h"
#include "BrimloCore/Journal/JournalLog.h"
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
/// Keeps no entries in memory. The file is a JSON list, replaced as a whole, so that it is valid at
/// each moment. What a clean, an undo or a purge changes group by group stands in the log beside it
/// first (`JournalLog`); readers see both. Locks the threads of this process first, then the other
/// processes, through `path` + ".lock". A damaged file is copied to `path` + ".corrupt" and read as
/// far as possible. Any thread; each call blocks while another process holds the lock.
class Journal {
    /// Excludes the other threads, then the other processes.
    struct Lock {
        std::unique_lock<std::mutex> threads;
        FileLock processes;  ///< Without it only the threads' lock is held.
    };

public:
    using Entries = std::vector<JournalEntry>;

    /// Entries that change together, with the locks held until it is destroyed. Costs the same
    /// however long the journal is.
    class Group {
    public:
        /// Writes to disk that the items of these entries are about to leave for the Trash or to
        /// return from it. If the process dies before `record`, the next reader looks where each
        /// item is, and settles its entry.
        [[nodiscard]] std::expected<void, Error> announce(
            JournalLog::Kind kind, const Entries& entries);

        /// Records new or changed entries. Not synced: after a power cut the announcement stands,
        /// and is settled in the same way.
        [[nodiscard]] std::expected<void, Error> record(
            JournalLog::Kind kind, const Entries& entries);

    private:
        friend class Journal;
        Group(Lock lock, const JournalLog& log)
            : lock_{std::move(lock)}
            , log_{&log} {}

        Lock lock_;
        const JournalLog* log_;
    };

    /// `path` is the journal's file. Nothing is read yet.
    explicit Journal(std::string path);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// All entries that can be decoded, last written first: dates are for people, and two cleans
    /// within a second have the same. A missing file has none; fails when a file is there that
    /// can't be read.
    [[nodiscard]] std::expected<Entries, Error> entries();

    /// Starts a group. Fails when the journal's file is there and can't be read.
    [[nodiscard]] std::expected<Group, Error> begin();

    /// Writes what groups recorded into the journal's file. After a failure it stays in the log.
    [[nodiscard]] std::expected<void, Error> merge();

    /// Appends an entry. A failure leaves the journal unchanged.
    [[nodiscard]] std::expected<void, Error> append(const JournalEntry& entry);

    /// Applies `body` to each entry whose id is in `ids`, in one write. A failure leaves the
    /// journal unchanged.
    [[nodiscard]] std::expected<void, Error> update(
        const std::set<Uuid>& ids, const std::function<void(JournalEntry&)>& body);

    /// Whether an entry could be recorded now.
    [[nodiscard]] std::expected<void, Error> checkWritable();

private:
    /// All entries, oldest first, and whether a process died between an announcement and its
    /// record.
    struct Content {
        Entries entries;
        bool hasLeftovers = false;
    };

    [[nodiscard]] Lock lock();
    [[nodiscard]] std::expected<Content, Error> load() const;
    [[nodiscard]] std::expected<void, Error> write(const Lock& held, const std::string& text) const;
    [[nodiscard]] std::expected<void, Error> merge(const Lock& held) const;

    std::mutex mutex_;
    std::string path_;
    JournalLog log_;
};

}  // namespace Brimlo
