#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Platform/TrashItem.h"
#include "BrimloCore/Support/Dates.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <set>
#include <utility>

// What happens to items after they went to the Trash. An item counts as the program's own only if
// the journal says so and `TrashItem::find` confirms it: the entry beside it, or its identity.

namespace Brimlo {

namespace {

using Platform::FileIdentity;

constexpr int kTargetExists = 1;
constexpr int kNothingLeft = 2;
constexpr int kNoPlace = 3;

std::unexpected<Error> failure(int code, std::string description) {
    return std::unexpected(
        Error{.domain = kErrorDomain, .code = code, .description = std::move(description)});
}

/// The identity of the entry's item in the Trash; ENOENT when it is not there any more.
std::expected<FileIdentity, Error> findItem(const JournalEntry& entry) {
    return entry.trashPath
               ? Platform::TrashItem::find(*entry.trashPath, entry.id.text(), entry.trashID)
               : std::unexpected(Error::fromSystem(ENOENT));
}

bool isGone(const std::expected<FileIdentity, Error>& found) {
    return !found && found.error().domain == kSystemErrorDomain && found.error().code == ENOENT;
}

/// The home folder may be spelled in several ways.
bool isInHomeTrash(const std::string& trashPath) {
    return FileIdentity::of(std::string{Path::parent(trashPath)}) ==
           FileIdentity::of(Platform::homeTrash());
}

}  // namespace

std::expected<std::vector<JournalEntry>, Error> Cleaner::history() {
    auto entries = journal_->entries();
    if (entries) {
        for (JournalEntry& entry : *entries) {
            entry.purgedFromTrash =
                entry.purgedFromTrash || (entry.isRestorable() && isGone(findItem(entry)));
        }
    }
    return entries;
}

UndoReport Cleaner::undo(const std::vector<Uuid>& ids) {
    UndoReport report;
    const auto entries = journal_->entries();
    if (!entries) {
        report.failures.push_back({journal_->path(), entries.error().description});
        return report;
    }
    const std::set<Uuid> wanted{ids.begin(), ids.end()};
    for (const JournalEntry& entry : *entries) {
        if (entry.undone || !wanted.contains(entry.id)) {
            continue;
        }
        const auto path = putBack(entry);
        if (!path) {
            report.failures.push_back({entry.originalPath, path.error().description});
            continue;
        }
        report.restored.push_back(*path);
        const auto marked =
            journal_->update({entry.id}, [](JournalEntry& changed) { changed.undone = true; });
        if (!marked) {
            report.unrecorded.push_back({entry.originalPath, marked.error().description});
        }
    }
    return report;
}

std::expected<std::string, Error> Cleaner::putBack(const JournalEntry& entry) {
    const auto found = findItem(entry);
    if (isGone(found)) {
        return failure(kNothingLeft, "Nothing left to restore from");
    }
    if (!found) {
        return std::unexpected(found.error());
    }
    if (!Path::isUsable(entry.originalPath) || !entry.originalPath.starts_with('/')) {
        return failure(kNoPlace, "The journal names no place to restore to");
    }
    // The plan's spelling may end in a slash or step through folders that are gone by now.
    const std::string original = Path::standardized(entry.originalPath);
    if (FileIdentity::of(original)) {
        return failure(kTargetExists, "Something already exists at " + entry.originalPath);
    }
    const std::string parent{Path::parent(original)};
    if (auto made = Folders::create(parent, Folders::Access::asUmaskAllows); !made) {
        return std::unexpected(made.error());
    }
    const auto restored = Platform::TrashItem::putBack(*entry.trashPath, *found, original);
    if (!restored && restored.error().code == EEXIST) {
        return failure(kTargetExists, "Something already exists at " + entry.originalPath);
    }
    if (!restored) {
        return std::unexpected(restored.error());
    }
    return entry.originalPath;
}

TrashReport Cleaner::purgeOwnTrash(std::int64_t olderThanDays, bool dryRun) {
    TrashReport report;
    const auto entries = journal_->entries();
    if (!entries) {
        report.failures.push_back({journal_->path(), entries.error().description});
        return report;
    }
    // Dates are whole seconds: those before this instant are those before its next whole second.
    const auto now = std::chrono::ceil<std::chrono::seconds>(std::chrono::system_clock::now());
    const std::time_t wholeNow = std::chrono::system_clock::to_time_t(now);
    const std::chrono::sys_seconds cutoff{
        std::chrono::seconds{Dates::daysBefore(wholeNow, olderThanDays)}};
    std::set<Uuid> gone;
    for (const JournalEntry& entry : *entries) {
        if (!entry.isRestorable() || entry.date >= cutoff) {
            continue;
        }
        const auto found = findItem(entry);
        if (isGone(found)) {
            gone.insert(entry.id);
            continue;
        }
        if (!found || !isInHomeTrash(*entry.trashPath) || !entry.trashID) {
            continue;  // It can't be proved to be the program's own.
        }
        if (!dryRun) {
            if (const auto removed = Platform::TrashItem::remove(*entry.trashPath, *found);
                !removed) {
                report.failures.push_back({*entry.trashPath, removed.error().description});
                continue;
            }
            gone.insert(entry.id);
        }
        report.bytes = Bytes::sum(report.bytes, entry.size);
        ++report.removed;
    }
    // In one write: whoever is killed before finds these items gone the next time.
    if (!gone.empty()) {
        static_cast<void>(
            journal_->update(gone, [](JournalEntry& changed) { changed.purgedFromTrash = true; }));
    }
    if (!dryRun) {
        Platform::TrashItem::removeLeftovers();
    }
    return report;
}

std::int64_t Cleaner::trashSize() {
    return DiskScanner::quickSize(Platform::homeTrash());
}

TrashReport Cleaner::emptyTrash() {
    TrashReport report;
    const std::string trash = Platform::homeTrash();
    const auto names = Folders::names(trash);
    if (!names) {
        // A Trash that nobody has used yet has no folder.
        if (names.error().code != ENOENT) {
            report.failures.push_back({trash, names.error().description});
        }
        return report;
    }
    report.bytes = trashSize();
    Platform::TrashItem::removeLeftovers();
    for (const std::string& name : *names) {
        const std::string path = trash + "/" + name;
        const auto found = FileIdentity::of(path);
        if (!found) {
            continue;  // Somebody else emptied it first.
        }
        if (const auto removed = Platform::TrashItem::remove(path, *found)) {
            ++report.removed;
        } else {
            report.failures.push_back({path, removed.error().description});
        }
    }
    if (!report.failures.empty()) {
        report.bytes = std::max<std::int64_t>(0, report.bytes - trashSize());
    }
    return report;
}

}  // namespace Brimlo
