#include "BrimloCore/Cleaner/Cleaner.h"

#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Support/Text.h"

#include <cerrno>
#include <string_view>
#include <utility>

// An item's way out: its identity is taken and the links of its parent are resolved; the gate
// judges it by both texts; a place in the Trash is made; the journal with its entry is written
// beside the old one; the item moves; the new journal takes the old one's place. Whenever the
// process dies, the item is in one of the two places, and at most the one that has just moved
// lacks its entry.
//
// What the gate judged is what moves: nothing is resolved or looked up again after the verdict, so
// that a parent that becomes a link meanwhile, or another item in the place, ends in a failure.

namespace Brimlo {

namespace {

/// How often a new place in the Trash is tried when another program takes the one found.
constexpr int kMostTries = 8;

bool isDiskFull(const Error& error) {
    return error.domain == kSystemErrorDomain && (error.code == ENOSPC || error.code == EDQUOT);
}

}  // namespace

Cleaner::Cleaner(std::shared_ptr<Journal> journal, DockerClient::Places docker)
    : journal_(std::move(journal))
    , docker_(std::move(docker)) {}

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
        // By its text the path means one thing, on the disk another.
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
        entry.trashID = trashed->path ? Cleaner::identity(*trashed->path) : std::nullopt;
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
    const auto identity = Platform::FileIdentity::of(path);
    return identity ? std::optional{identity->text()} : std::nullopt;
}

}  // namespace Brimlo
