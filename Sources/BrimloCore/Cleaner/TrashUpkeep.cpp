#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Platform/TrashItem.h"
#include "BrimloCore/Support/Days.h"
#include "BrimloCore/Support/Folders.h"
#include "BrimloCore/Support/Path.h"

#include <cerrno>
#include <chrono>
#include <ctime>
#include <string_view>
#include <utility>

// What happens to items after they went to the Trash. An item counts as the program's own only if
// the journal says so and what lies at the recorded path is still the recorded object: its device
// and inode agree, and so does the entry that the Trash names beside it, where it names one. The
// entry tells an object that reused an inode, and a volume that got another device number when it
// was mounted again.

namespace Brimlo {

namespace {

using Platform::FileIdentity;

constexpr int kTargetExists = 1;
constexpr int kNothingLeft = 2;

std::unexpected<Error> failure(int code, std::string description) {
    return std::unexpected(
        Error{.domain = kErrorDomain, .code = code, .description = std::move(description)});
}

std::string_view inode(std::string_view trashID) {
    return trashID.substr(trashID.rfind(':') + 1);
}

/// Whether the object at the entry's path in the Trash, with this identity, is the entry's item.
/// An entry from before identities were recorded is taken at its word.
bool isItemOf(const JournalEntry& entry, const FileIdentity& found) {
    const auto entryID = Platform::TrashItem::entryID(*entry.trashPath);
    if (entryID && *entryID != entry.id.text()) {
        return false;
    }
    const std::string& recorded = entry.trashID.value_or(found.text());
    return recorded == found.text() || (entryID && inode(recorded) == inode(found.text()));
}

bool isInHomeTrash(const std::string& trashPath) {
    return Path::standardized(trashPath) == trashPath &&
           Path::parent(trashPath) == Path::standardized(Platform::homeTrash());
}

}  // namespace

std::expected<std::string, Error> Cleaner::undo(const JournalEntry& entry) {
    const auto found = entry.trashPath ? FileIdentity::of(*entry.trashPath) : std::nullopt;
    if (!found || !isItemOf(entry, *found)) {
        return failure(kNothingLeft, "Nothing left to restore from");
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
    const auto restored = Platform::TrashItem::putBack(*entry.trashPath, original);
    if (!restored && restored.error().code == EEXIST) {
        return failure(kTargetExists, "Something already exists at " + entry.originalPath);
    }
    if (!restored) {
        return std::unexpected(restored.error());
    }
    journal_->update(entry.id, [](JournalEntry& changed) { changed.undone = true; });
    return entry.originalPath;
}

std::int64_t Cleaner::purgeOwnTrash(std::int64_t olderThanDays, bool dryRun) {
    // Dates are whole seconds: those before this instant are those before its next whole second.
    const auto now = std::chrono::ceil<std::chrono::seconds>(std::chrono::system_clock::now());
    const std::time_t wholeNow = std::chrono::system_clock::to_time_t(now);
    const std::chrono::sys_seconds cutoff{
        std::chrono::seconds{Days::before(wholeNow, olderThanDays)}};
    const auto markPurged = [&](const JournalEntry& entry) {
        journal_->update(entry.id, [](JournalEntry& changed) { changed.purgedFromTrash = true; });
    };
    std::int64_t total = 0;
    for (const JournalEntry& entry : journal_->entries()) {
        const bool isOld = entry.date < cutoff;
        if (entry.undone || entry.purgedFromTrash || !isOld || !entry.trashPath) {
            continue;
        }
        const auto found = FileIdentity::of(*entry.trashPath);
        if (!found) {
            markPurged(entry);
            continue;
        }
        if (!isInHomeTrash(*entry.trashPath) || !entry.trashID) {
            continue;  // It can't be proved to be the program's own.
        }
        if (!isItemOf(entry, *found)) {
            markPurged(entry);
            continue;
        }
        total += entry.size;
        if (!dryRun) {
            static_cast<void>(Platform::TrashItem::remove(*entry.trashPath, *found));
            markPurged(entry);
        }
    }
    if (!dryRun) {
        Platform::TrashItem::removeLeftovers();
    }
    return total;
}

std::int64_t Cleaner::trashSize() {
    return DiskScanner::quickSize(Platform::homeTrash());
}

std::expected<std::int64_t, Error> Cleaner::emptyTrash() {
    const std::string trash = Platform::homeTrash();
    const std::int64_t size = trashSize();
    const auto names = Folders::names(trash);
    if (!names) {
        // A Trash that nobody has used yet has no folder.
        return names.error().code == ENOENT ? std::expected<std::int64_t, Error>{0}
                                            : std::unexpected(names.error());
    }
    Platform::TrashItem::removeLeftovers();
    for (const std::string& name : *names) {
        const std::string path = trash + "/" + name;
        const auto found = FileIdentity::of(path);
        if (!found) {
            continue;  // Somebody else emptied it first.
        }
        if (auto removed = Platform::TrashItem::remove(path, *found); !removed) {
            return std::unexpected(removed.error());
        }
    }
    return size;
}

}  // namespace Brimlo
