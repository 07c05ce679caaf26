#include "BrimloCore/Cleaner/Disposal.h"

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iterator>
#include <utility>

namespace Brimlo {

namespace {

using Kind = JournalLog::Kind;
using Platform::TrashGroup;

/// How many names in the Trash are tried when other programs take them first.
constexpr int kMostTries = 8;

constexpr const char* kOtherItem = "it is not the item that was reviewed";

bool isDiskFull(const Error& error) {
    return error.domain == kSystemErrorDomain && (error.code == ENOSPC || error.code == EDQUOT);
}

Safety::Chosen chosen(const CleanItem& item) {
    return item.ruleID ? Safety::Chosen::byRule : Safety::Chosen::byPerson;
}

template <typename Leaving>
std::vector<JournalEntry> entriesOf(const std::vector<Leaving>& leaving) {
    std::vector<JournalEntry> entries;
    entries.reserve(leaving.size());
    std::ranges::transform(leaving, std::back_inserter(entries), &Leaving::entry);
    return entries;
}

}  // namespace

struct Disposal::Group {
    Safety::Gate gate;
    TrashGroup trash;
    std::optional<Journal::Group> entries;
    std::optional<Error> unannounced;  ///< Why the journal could not announce the items.
};

Disposal::Disposal(
    Journal& journal, const CleanOptions& options, const Uuid& batchID, CleanReport& report)
    : journal_{journal}
    , options_{options}
    , batchID_{batchID}
    , report_{report} {}

void Disposal::move(std::span<const CleanItem> items) {
    while (!items.empty()) {
        const std::size_t count = std::min(items.size(), TrashGroup::size());
        std::vector<const CleanItem*> group;
        group.reserve(count);
        std::ranges::transform(
            items.first(count), std::back_inserter(group), [](const auto& item) { return &item; });
        for (int tries = 1; !group.empty(); ++tries) {
            group = moveGroup(group, tries == kMostTries);
        }
        items = items.subspan(count);
    }
}

/// Those to try again are returned: another program took their names in the Trash.
std::vector<const CleanItem*> Disposal::moveGroup(
    const std::vector<const CleanItem*>& items, bool isLastTry) {
    Group group;
    std::vector<Leaving> leaving;
    leaving.reserve(items.size());
    for (const CleanItem* item : items) {
        if (auto prepared = prepare(*item, group)) {
            leaving.push_back(*std::move(prepared));
        }
    }
    std::erase_if(leaving, [&](Leaving& each) {
        const auto synced = each.move.syncInfo();
        if (!synced) {
            fail(*each.item, synced.error().description);
        }
        return !synced;
    });
    std::vector<const CleanItem*> again;
    if (leaving.empty() || !announce(leaving, group)) {
        return again;
    }
    std::erase_if(leaving, [&](Leaving& each) {
        const Outcome outcome = commit(each, group, isLastTry);
        if (outcome == Outcome::again) {
            again.push_back(each.item);
        }
        return outcome != Outcome::moved;
    });
    group.trash.sync();
    record(leaving, group);
    return again;
}

std::optional<Safety::Verdict> Disposal::judge(
    const CleanItem& item, const Safety::Gate& gate, CleanReport& report) {
    Safety::Verdict verdict = gate.judge(item.path, chosen(item));
    if (verdict.refusal) {
        report.refused.push_back({item.path, *verdict.refusal, item.title});
        return std::nullopt;
    }
    const auto refuse = [&](const char* reason) -> std::optional<Safety::Verdict> {
        report.failures.push_back({item.path, reason, item.title});
        return std::nullopt;
    };
    if (!verdict.entry) {
        // The system finds something else by this path than its canonical text names.
        return refuse(Cleaner::identity(item.path) ? kOtherItem : "no longer exists");
    }
    if (!Text::isValid(item.path) || !Text::isValid(verdict.resolved)) {
        return refuse("its name is not valid text, so the journal could not bring it back");
    }
    return verdict;
}

std::optional<Disposal::Leaving> Disposal::prepare(const CleanItem& item, Group& group) {
    if (isStopped()) {
        report_.untouched.push_back(item.path);
        return std::nullopt;
    }
    const auto verdict = judge(item, group.gate, report_);
    if (!verdict) {
        return std::nullopt;
    }
    std::optional<ComparedCopy> copy;
    if (!compare(item, verdict->resolved, copy)) {
        return std::nullopt;
    }
    JournalEntry entry = JournalEntry::make({
        .originalPath = item.path,
        .trashPath = std::nullopt,
        .size = item.size,
        .ruleID = item.ruleID,
        .trashID = verdict->entry->identity.text(),
        .batchID = batchID_,
    });
    Platform::TrashMove::Request request{
        .path = verdict->resolved,
        .identity = verdict->entry->identity,
        .entryID = entry.id.text(),
    };
    auto move = group.trash.prepare(request);
    if (!move) {
        fail(item, move.error().description);
        return std::nullopt;
    }
    entry.trashPath = move->destination();
    if (options_.progress) {
        options_.progress(item);  // Here, because the journal is not locked yet.
    }
    return Leaving{
        .item = &item,
        .request = std::move(request),
        .move = *std::move(move),
        .entry = std::move(entry),
        .copy = std::move(copy),
    };
}

/// False when an extra of equal files must stay; it is reported then. Here and not in `commit`,
/// because reading takes long and the journal is not locked yet.
bool Disposal::compare(
    const CleanItem& item, const std::string& path, std::optional<ComparedCopy>& copy) {
    if (!item.copyOf) {
        return true;
    }
    auto compared = ComparedCopy::of(path, *item.copyOf, options_.isStopped);
    if (compared) {
        copy = *std::move(compared);
    } else if (isStopped()) {
        report_.untouched.push_back(item.path);
    } else {
        fail(item, compared.error());
    }
    return copy.has_value();
}

/// False when the items must stay; each is reported then.
bool Disposal::announce(const std::vector<Leaving>& leaving, Group& group) {
    if (auto begun = journal_.begin()) {
        group.entries.emplace(*std::move(begun));
        const auto announced = group.entries->announce(Kind::leaves, entriesOf(leaving));
        group.unannounced = announced ? std::nullopt : std::optional{announced.error()};
    } else {
        group.unannounced = begun.error();
    }
    const bool isFull = group.unannounced && isDiskFull(*group.unannounced);
    if (!group.unannounced || (!isFull && options_.unrecorded == CleanOptions::Unrecorded::goes)) {
        return true;
    }
    for (const Leaving& each : leaving) {
        fail(
            *each.item,
            isFull ? "the disk is too full to record the move"
                   : "the journal can't be written: " + group.unannounced->description);
    }
    return false;
}

/// Moves one item. When it stays, the reason has been reported, unless another try may do.
Disposal::Outcome Disposal::commit(Leaving& leaving, Group& group, bool isLastTry) {
    const CleanItem& item = *leaving.item;
    if (isStopped()) {
        report_.untouched.push_back(item.path);
        return Outcome::stays;
    }
    const Safety::Verdict verdict = group.gate.judgeAnew(item.path, chosen(item));
    if (verdict.refusal) {
        report_.refused.push_back({item.path, *verdict.refusal, item.title});
        return Outcome::stays;
    }
    if (!verdict.entry || verdict.entry->identity != leaving.request.identity ||
        verdict.resolved != leaving.request.path) {
        fail(item, Cleaner::identity(item.path) ? kOtherItem : "no longer exists");
        return Outcome::stays;
    }
    if (auto reason = leaving.copy ? leaving.copy->refusal() : std::nullopt) {
        fail(item, *std::move(reason));
        return Outcome::stays;
    }
    const auto trashed = leaving.move.commit();
    if (!trashed && trashed.error().code == EEXIST && !isLastTry) {
        return Outcome::again;
    }
    if (!trashed) {
        fail(item, trashed.error().description);
        return Outcome::stays;
    }
    JournalEntry entry = leaving.entry;
    entry.trashPath = trashed->path;
    entry.trashID = trashed->path ? Cleaner::identity(*trashed->path) : std::nullopt;
    leaving.isAnnounced = entry == leaving.entry;
    leaving.entry = std::move(entry);
    if (trashed->warning) {
        fail(item, *trashed->warning);
    } else {
        report_.movedToTrashBytes = Bytes::sum(report_.movedToTrashBytes, item.size);
        ++report_.processed;
    }
    return Outcome::moved;
}

void Disposal::record(const std::vector<Leaving>& moved, Group& group) {
    auto problem = group.unannounced;
    if (!problem) {
        const auto recorded = group.entries->record(Kind::added, entriesOf(moved));
        problem = recorded ? std::nullopt : std::optional{recorded.error()};
    }
    for (const Leaving& each : moved) {
        // The announcement alone tells the next reader what to look for.
        if (!problem || (!group.unannounced && each.isAnnounced)) {
            report_.journalIDs.push_back(each.entry.id);
        } else {
            report_.unrecorded.push_back(
                {each.item->path,
                 "it is in the Trash and the journal lacks it: " + problem->description,
                 each.item->title});
        }
    }
}

void Disposal::fail(const CleanItem& item, std::string reason) {
    report_.failures.push_back({item.path, std::move(reason), item.title});
}

}  // namespace Brimlo
