#include "BrimloCore/Cleaner/AutoCleaner.h"

#include "BrimloCore/LeftAlone/LeftAlone.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"

namespace Brimlo {

namespace AutoCleaner {

namespace {

constexpr const char* kIsOff =
    "Auto-clean is off. Turn it on in Settings (or `config auto-clean-enabled true`), or pass "
    "--force for a one-off run.";

bool mayClean(const Suggestion& suggestion, const AppConfig& config) {
    return suggestion.risk != Risk::review && suggestion.runningApps.empty() &&
           (config.autoCleanIncludesCustomRules || !suggestion.isUsersOwn);
}

}  // namespace

AutoCleanOutcome run(
    const AppConfig& config,
    Cleaner& cleaner,
    bool dryRun,
    bool force,
    const std::function<bool()>& isStopped) {
    AutoCleanOutcome outcome;
    if (!config.autoCleanEnabled && !force) {
        outcome.skippedReason = kIsOff;
        return outcome;
    }
    if (const auto writable = cleaner.checkJournal(); !writable) {
        outcome.skippedReason = "Auto-clean did not run: the journal can't be written (" +
                                writable.error().description + ").";
        outcome.isBlocked = true;
        return outcome;
    }
    if (const auto leftAlone = LeftAlone::load(); !leftAlone) {
        outcome.skippedReason = "Auto-clean did not run. " + leftAlone.error().description + ".";
        outcome.isBlocked = true;
        return outcome;
    }
    // Even when there is enough free space: the retention is a promise.
    outcome.purge = cleaner.purgeOwnTrash(config.trashRetentionDays, dryRun);
    if (!force) {
        outcome.skippedReason = reasonToWait(config, VolumeInfo::ofHome());
    }
    if (!outcome.skippedReason) {
        const SuggestionOptions everything{
            .staleDays = config.staleDays, .docker = cleaner.docker()};
        const CleanPlan plan = selection(config, SuggestionEngine::generate(everything));
        outcome.planned = plan.items();
        const CleanOptions options{
            .isStopped = isStopped, .unrecorded = CleanOptions::Unrecorded::stays};
        outcome.report = cleaner.execute(plan, DisposalMode::trash, dryRun, options);
    }
    return outcome;
}

std::optional<std::string> reasonToWait(
    const AppConfig& config, const std::optional<VolumeInfo::Snapshot>& volume) {
    if (!volume) {
        return "Auto-clean did not run: the free space could not be read.";
    }
    constexpr std::int64_t kBytesPerGB = 1'000'000'000;
    if (volume->available <= Bytes::product(config.freeSpaceThresholdGB, kBytesPerGB)) {
        return std::nullopt;
    }
    return "Free space " + Fmt::bytes(volume->available) + " is above the " +
           std::to_string(config.freeSpaceThresholdGB) + " GB threshold.";
}

CleanPlan selection(const AppConfig& config, const std::vector<Suggestion>& suggestions) {
    return CleanPlan::of(
        suggestions, [&](const Suggestion& suggestion, const SuggestionItem& item) {
            return mayClean(suggestion, config) && suggestion.preselectedPaths.contains(item.path);
        });
}

}  // namespace AutoCleaner

std::string AutoCleanOutcome::sentence(bool dryRun) const {
    std::string text;
    if (purge.removed > 0 || !purge.failures.empty()) {
        text = purge.purgedSentence(dryRun) + " ";
    }
    if (skippedReason) {
        return text + *skippedReason;
    }
    if (planned.empty()) {
        return text + "Auto-clean found nothing to remove right now.";
    }
    std::int64_t bytes = Bytes::sum(report->movedToTrashBytes, report->freedNowBytes);
    if (dryRun) {
        bytes = CleanPlan{planned}.totalBytes();
    }
    text += dryRun ? "Auto-clean would remove " : "Auto-clean removed ";
    text += std::to_string(report->processed) + " item" + (report->processed == 1 ? "" : "s") +
            " (" + Fmt::bytes(bytes) + ").";
    const std::size_t stayed = report->failures.size() + report->refused.size();
    if (stayed > 0) {
        const ItemProblem& first =
            report->failures.empty() ? report->refused.front() : report->failures.front();
        text += " " + std::to_string(stayed) + " could not be removed: " + first.text() + ".";
    }
    return text;
}

std::optional<std::string> AutoCleanOutcome::notice() const {
    if (!report || !report->canUndo()) {
        return std::nullopt;
    }
    return "Auto-clean moved " + Fmt::bytes(report->movedToTrashBytes) +
           " to the Trash. The History of Brimlo can undo it.";
}

}  // namespace Brimlo
