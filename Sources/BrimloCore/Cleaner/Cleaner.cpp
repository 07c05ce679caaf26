#include "BrimloCore/Cleaner/Cleaner.h"

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
#include <set>
#include <string_view>
#include <utility>

// The steps of a disposal: the item's identity is read and the symlinks of its parent are resolved;
// the gate judges both paths; the trashinfo file is written; the journal with the new entry is
// written to a temporary file; the item moves; the temporary file replaces the journal. If the
// process dies at any point, the item is in one of the two places, and at most the item that has
// just moved has no entry.
//
// After the verdict nothing is resolved or looked up again. If a parent becomes a symlink
// meanwhile, or another item takes the place, the move fails.
//
// Undo and purge act on an item in the Trash only if the journal has an entry for it and
// `TrashItem::find` confirms it, by its trashinfo file or its identity.

namespace Brimlo {

namespace {

using Platform::FileIdentity;

/// How many names in the Trash are tried when other programs take them first.
constexpr int kMostTries = 8;

bool isDiskFull(const Error& error) {
    return error.domain == kSystemErrorDomain && (error.code == ENOSPC || error.code == EDQUOT);
}

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
    const CleanPlan& plan,
    DisposalMode /*mode*/,
    bool dryRun,
    const Progress& progress,
    Unrecorded unrecorded) {
    const Uuid batchID = Uuid::random();
    CleanReport report;
    for (const CleanItem& item : plan.items()) {
        if (isPseudoPath(item.path)) {
            if (progress) {
                progress(item.path);
            }
            if (dryRun) {
                ++report.processed;
            } else {
                removeFromDocker(item, batchID, report);
            }
            continue;
        }
        const Safety::Verdict verdict = Safety::judge(
            item.path, item.ruleID ? Safety::Chosen::byRule : Safety::Chosen::byPerson);
        if (verdict.refusal) {
            report.refused.push_back({item.path, *verdict.refusal});
            continue;
        }
        if (progress) {
            progress(item.path);
        }
        if (dryRun) {
            ++report.processed;
        } else {
            dispose(item, verdict, batchID, unrecorded, report);
        }
    }
    return report;
}

void Cleaner::removeFromDocker(const CleanItem& item, const Uuid& batchID, CleanReport& report) {
    if (const auto reason = DockerClient::remove(item.path, docker_)) {
        report.failures.push_back({item.path, *reason});
        return;
    }
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
        report.unrecorded.push_back({item.path, "it is gone and the journal lacks it: " + reason});
    }
    report.freedNowBytes = Bytes::sum(report.freedNowBytes, item.size);
    ++report.processed;
}

void Cleaner::dispose(
    const CleanItem& item,
    const Safety::Verdict& verdict,
    const Uuid& batchID,
    Unrecorded unrecorded,
    CleanReport& report) {
    const auto fail = [&](std::string reason) {
        report.failures.push_back({item.path, std::move(reason)});
    };
    if (!verdict.identity) {
        // The system finds something else by this path than its canonical text names.
        return fail(
            identity(item.path) ? "it is not the item that was reviewed" : "no longer exists");
    }
    if (!Text::isValid(item.path) || !Text::isValid(verdict.resolved)) {
        return fail("its name is not valid text, so the journal could not bring it back");
    }
    JournalEntry entry = JournalEntry::make({
        .originalPath = item.path,
        .trashPath = std::nullopt,
        .size = item.size,
        .ruleID = item.ruleID,
        .trashID = verdict.identity->text(),
        .batchID = batchID,
    });
    const Platform::TrashMove::Request request{
        .path = verdict.resolved,
        .identity = *verdict.identity,
        .entryID = entry.id.text(),
    };
    for (int attempt = 1;; ++attempt) {
        auto move = Platform::TrashMove::prepare(request);
        if (!move) {
            return fail(move.error().description);
        }
        entry.trashPath = move->destination();
        auto record = journal_->prepare(entry);
        if (!record && isDiskFull(record.error())) {
            return fail("the disk is too full to record the move");
        }
        if (!record && unrecorded == Unrecorded::stays) {
            return fail("the journal can't be written: " + record.error().description);
        }
        const auto trashed = move->commit();
        if (!trashed) {
            if (trashed.error().code == EEXIST && attempt < kMostTries) {
                continue;
            }
            return fail(trashed.error().description);
        }
        entry.trashPath = trashed->path;
        entry.trashID = trashed->path ? identity(*trashed->path) : std::nullopt;
        const auto recorded = record ? std::move(*record).publish(entry)
                                     : std::expected<void, Error>{std::unexpected(record.error())};
        if (recorded) {
            report.journalIDs.push_back(entry.id);
        } else {
            report.unrecorded.push_back(
                {item.path,
                 "it is in the Trash and the journal lacks it: " + recorded.error().description});
        }
        if (trashed->warning) {
            return fail(*trashed->warning);
        }
        report.movedToTrashBytes = Bytes::sum(report.movedToTrashBytes, item.size);
        ++report.processed;
        return;
    }
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
    // The plan's spelling may end in a slash, or contain ".." after a folder that is gone now.
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
    // In one write. If the process is killed before, the next purge finds these items gone.
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
        // A Trash that was never used has no folder.
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
            continue;  // Another program removed it first.
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
