#include "BrimloCore/Cleaner/Cleaner.h"

#include "BrimloCore/Cleaner/Disposal.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Platform/TrashItem.h"
#include "BrimloCore/Support/Dates.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <string_view>
#include <utility>

// Undo and the purge of old items act on an item in the Trash only if the journal has an entry for
// it and `TrashItem::find` confirms it, by its trashinfo file or its identity. What a person names
// there may be of any program; it goes or comes back only while it has the identity that was
// listed.

namespace Brimlo {

namespace {

using Platform::FileIdentity;

/// How many items are restored with one sync of each folder.
constexpr std::size_t kMostTogether = 64;

constexpr int kTargetExists = 1;
constexpr int kNothingLeft = 2;
constexpr int kNoPlace = 3;

std::unexpected<Error> failure(int code, std::string description) {
    return std::unexpected(
        Error{.domain = kErrorDomain, .code = code, .description = std::move(description)});
}

/// The identity of the entry's item in the Trash; ENOENT when it is gone.
std::expected<FileIdentity, Error> findItem(const JournalEntry& entry) {
    return entry.trashPath
               ? Platform::TrashItem::find(*entry.trashPath, entry.id.text(), entry.trashID)
               : std::unexpected(Error::fromSystem(ENOENT));
}

bool isGone(const std::expected<FileIdentity, Error>& found) {
    return !found && found.error().domain == kSystemErrorDomain && found.error().code == ENOENT;
}

bool isStopped(const CleanOptions& options) {
    return options.isStopped && options.isStopped();
}

/// Compares identities: the home folder may have several spellings.
bool isInHomeTrash(const std::string& trashPath) {
    return FileIdentity::of(std::string{Path::parent(trashPath)}) ==
           FileIdentity::of(Platform::homeTrash());
}

}  // namespace

Cleaner::Cleaner(std::shared_ptr<Journal> journal, DockerClient::Places docker)
    : journal_{std::move(journal)}
    , docker_{std::move(docker)} {}

CleanReport Cleaner::execute(
    const CleanPlan& plan, DisposalMode /*mode*/, bool dryRun, const CleanOptions& options) {
    const Uuid batchID = Uuid::random();
    CleanReport report;
    if (dryRun) {
        const Safety::Gate gate;
        for (const CleanItem& item : plan.items()) {
            rehearse(item, gate, options, report);
        }
        return report;
    }
    Disposal disposal{*journal_, options, batchID, report};
    for (std::span<const CleanItem> rest = plan.items(); !rest.empty();) {
        const auto end = std::ranges::find_if(rest, isPseudoPath, &CleanItem::path);
        disposal.move({rest.begin(), end});
        rest = {end, rest.end()};
        if (!rest.empty()) {
            removeFromDocker(rest.front(), options, batchID, report);
            rest = rest.subspan(1);
        }
    }
    // What can't be merged now stays in the log, which every reader reads.
    static_cast<void>(journal_->merge());
    return report;
}

void Cleaner::rehearse(
    const CleanItem& item,
    const Safety::Gate& gate,
    const CleanOptions& options,
    CleanReport& report) {
    if (isStopped(options)) {
        report.untouched.push_back(item.path);
        return;
    }
    if (!isPseudoPath(item.path) && !Disposal::judge(item, gate, report)) {
        return;
    }
    if (options.progress) {
        options.progress(item);
    }
    ++report.processed;
}

void Cleaner::removeFromDocker(
    const CleanItem& item, const CleanOptions& options, const Uuid& batchID, CleanReport& report) {
    if (isStopped(options)) {
        report.untouched.push_back(item.path);
        return;
    }
    if (options.progress) {
        options.progress(item);
    }
    if (const auto reason = DockerClient::remove(item.path, docker_)) {
        report.failures.push_back({item.path, *reason, item.title});
        return;
    }
    report.goneForGood.push_back(item);
    const JournalEntry entry = JournalEntry::make({
        .originalPath = item.path,
        .trashPath = std::nullopt,
        .size = item.size,
        .ruleID = item.ruleID,
        .trashID = std::nullopt,
        .batchID = batchID,
    });
    if (const auto recorded = journal_->append(entry)) {
        report.journalIDs.push_back(entry.id);
    } else {
        const std::string reason = recorded.error().description;
        report.unrecorded.push_back(
            {item.path, "it is gone and the journal lacks it: " + reason, item.title});
    }
    report.freedNowBytes = Bytes::sum(report.freedNowBytes, item.size);
    ++report.processed;
}

std::optional<std::string> Cleaner::identity(const std::string& path) {
    const auto identity = FileIdentity::of(path);
    return identity ? std::optional{identity->text()} : std::nullopt;
}

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
    std::vector<JournalEntry> returning;
    for (const JournalEntry& entry : *entries) {
        if (!entry.undone && wanted.contains(entry.id)) {
            returning.push_back(entry);
        }
    }
    for (std::span<const JournalEntry> rest = returning; !rest.empty();) {
        const std::size_t count = std::min(rest.size(), kMostTogether);
        putBackTogether(rest.first(count), report);
        rest = rest.subspan(count);
    }
    static_cast<void>(journal_->merge());
    return report;
}

/// Restores items that share the syncs of their folders and one record in the journal.
void Cleaner::putBackTogether(std::span<const JournalEntry> entries, UndoReport& report) {
    struct Found {
        JournalEntry entry;
        FileIdentity identity;
    };
    const auto fail = [&](const JournalEntry& entry, const Error& error) {
        report.failures.push_back({entry.originalPath, error.description});
    };
    auto group = journal_->begin();
    std::vector<Found> found;
    std::vector<JournalEntry> announced;
    for (const JournalEntry& entry : entries) {
        if (const auto identity = findToReturn(entry)) {
            found.push_back({.entry = entry, .identity = *identity});
            announced.push_back(entry);
        } else {
            fail(entry, identity.error());
        }
    }
    if (found.empty()) {
        return;
    }
    const auto recorded = group ? group->announce(JournalLog::Kind::returns, announced)
                                : std::expected<void, Error>{std::unexpected(group.error())};
    std::vector<JournalEntry> restored;
    std::vector<Platform::TrashItem::Returned> returned;
    for (auto& [entry, identity] : found) {
        if (const auto path = putBack(*entry.trashPath, identity, entry.originalPath)) {
            returned.push_back({.trashPath = *entry.trashPath, .path = *path});
            report.restored.push_back(entry.originalPath);
            restored.push_back(entry);
            restored.back().undone = true;
        } else {
            fail(entry, path.error());
        }
    }
    Platform::TrashItem::settle(returned);
    if (recorded) {
        // When this fails, the next reader settles what was announced.
        static_cast<void>(group->record(JournalLog::Kind::changed, restored));
        return;
    }
    for (const JournalEntry& entry : restored) {
        report.unrecorded.push_back({entry.originalPath, recorded.error().description});
    }
}

std::expected<FileIdentity, Error> Cleaner::findToReturn(const JournalEntry& entry) {
    auto found = findItem(entry);
    if (isGone(found)) {
        return failure(kNothingLeft, "Nothing left to restore from");
    }
    if (found && (!Path::isUsable(entry.originalPath) || !entry.originalPath.starts_with('/'))) {
        return failure(kNoPlace, "The journal names no place to restore to");
    }
    return found;
}

/// Moves the item back; the path that it has now.
std::expected<std::string, Error> Cleaner::putBack(
    const std::string& trashPath, const FileIdentity& identity, const std::string& originalPath) {
    // The plan's spelling may end in a slash, or contain ".." after a folder that is gone now.
    std::string original = Path::standardized(originalPath);
    if (FileIdentity::of(original)) {
        return failure(kTargetExists, "Something already exists at " + originalPath);
    }
    const std::string parent{Path::parent(original)};
    if (auto made = Folders::create(parent, Folders::Access::asUmaskAllows); !made) {
        return std::unexpected(made.error());
    }
    const auto restored = Platform::TrashItem::putBack(trashPath, identity, original);
    if (!restored && restored.error().code == EEXIST) {
        return failure(kTargetExists, "Something already exists at " + originalPath);
    }
    if (!restored) {
        return std::unexpected(restored.error());
    }
    return original;
}

std::expected<TrashContents, Error> Cleaner::trashContents() {
    const auto entries = journal_->entries();
    if (!entries) {
        return std::unexpected(entries.error());
    }
    std::map<FileIdentity, const JournalEntry*> own;
    for (const JournalEntry& entry : *entries) {
        if (const auto found = entry.isRestorable() ? findItem(entry) : failure(kNothingLeft, "")) {
            own.emplace(*found, &entry);
        }
    }
    TrashContents contents;
    std::set<std::string_view> folders;
    const Platform::TrashItem::Listing listing = Platform::TrashItem::list();
    for (const auto& [trashPath, identity, path, date] : listing.items) {
        SpaceUse use = DiskScanner::spaceUse(trashPath);
        TrashContents::Item item{
            .trashPath = trashPath,
            .identity = identity,
            .originalPath = path,
            .date = std::nullopt,
            .size = use.size,
            .shared = std::move(use.shared),
            .entryID = std::nullopt,
        };
        if (date) {
            item.date = std::chrono::sys_seconds{std::chrono::seconds{*date}};
        }
        if (const auto entry = own.find(identity); entry != own.end()) {
            item.originalPath = entry->second->originalPath;
            item.date = entry->second->date;
            item.entryID = entry->second->id;
        }
        contents.items.push_back(std::move(item));
        folders.insert(Path::parent(trashPath));
    }
    std::ranges::stable_sort(contents.items, std::greater{}, &TrashContents::Item::date);
    for (const std::string_view folder : folders) {
        contents.bytes = Bytes::sum(contents.bytes, DiskScanner::quickSize(std::string{folder}));
    }
    for (const auto& [path, error] : listing.closed) {
        contents.failures.push_back({path, error.description});
    }
    return contents;
}

UndoReport Cleaner::restore(const std::vector<TrashContents::Item>& items) {
    std::vector<Uuid> own;
    UndoReport theirs;
    std::vector<Platform::TrashItem::Returned> returned;
    for (const TrashContents::Item& item : items) {
        if (item.entryID) {
            own.push_back(*item.entryID);
            continue;
        }
        const auto path = item.originalPath
                              ? putBack(item.trashPath, item.identity, *item.originalPath)
                              : failure(kNoPlace, "The Trash names no place to restore to");
        if (path) {
            returned.push_back({.trashPath = item.trashPath, .path = *path});
            theirs.restored.push_back(*path);
        } else {
            theirs.failures.push_back({item.trashPath, path.error().description});
        }
    }
    Platform::TrashItem::settle(returned);
    UndoReport report = own.empty() ? UndoReport{} : undo(own);
    report.restored.insert(report.restored.end(), theirs.restored.begin(), theirs.restored.end());
    report.failures.insert(report.failures.end(), theirs.failures.begin(), theirs.failures.end());
    return report;
}

TrashReport Cleaner::purge(const std::vector<TrashContents::Item>& items) {
    TrashReport report;
    std::set<Uuid> gone;
    for (const auto& item : items) {
        if (const auto removed = Platform::TrashItem::remove(item.trashPath, item.identity);
            !removed) {
            report.failures.push_back({item.trashPath, removed.error().description});
            continue;
        }
        if (item.entryID) {
            gone.insert(*item.entryID);
        }
        report.bytes = Bytes::sum(report.bytes, item.size);
        ++report.removed;
    }
    markPurged(gone);
    return report;
}

/// In one write. If the process is killed before, the next purge finds these items gone.
void Cleaner::markPurged(const std::set<Uuid>& gone) {
    if (!gone.empty()) {
        static_cast<void>(
            journal_->update(gone, [](JournalEntry& changed) { changed.purgedFromTrash = true; }));
    }
}

TrashReport Cleaner::purgeOwnTrash(std::int64_t olderThanDays, bool dryRun) {
    TrashReport report;
    const auto entries = journal_->entries();
    if (!entries) {
        report.failures.push_back({journal_->path(), entries.error().description});
        return report;
    }
    // Dates are whole seconds, so a date before now is one before the next whole second.
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
            continue;  // Not provably the item that Brimlo put there.
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
    markPurged(gone);
    if (!dryRun) {
        Platform::TrashItem::removeLeftovers();
    }
    return report;
}

SpaceUse Cleaner::trashUse() {
    return DiskScanner::spaceUse(Platform::homeTrash());
}

TrashReport Cleaner::emptyTrash(bool dryRun) {
    TrashReport report{.freedBytes = 0};
    const std::string trash = Platform::homeTrash();
    const auto names = Folders::names(trash);
    if (!names) {
        // A Trash that was never used has no folder.
        if (names.error().code != ENOENT) {
            report.failures.push_back({trash, names.error().description});
        }
        return report;
    }
    const SpaceUse before = trashUse();
    report.bytes = before.size;
    report.freedBytes = FreedSpace::alone(before).atLeast();
    if (dryRun) {
        report.removed = std::ssize(*names);
        return report;
    }
    Platform::TrashItem::removeLeftovers();
    for (const std::string& name : *names) {
        const std::string path = trash + "/" + name;
        const auto found = FileIdentity::of(path);
        if (!found) {
            continue;  // Another program removed it first.
        }
        if (const auto removed = Platform::TrashItem::remove(path, *found)) {
            ++report.removed;
        } else {
            report.failures.push_back({path, removed.error().description});
        }
    }
    if (!report.failures.empty()) {
        const std::int64_t left = trashUse().size;
        report.bytes = std::max<std::int64_t>(0, report.bytes - left);
        report.freedBytes = std::max<std::int64_t>(0, *report.freedBytes - left);
    }
    return report;
}

}  // namespace Brimlo
