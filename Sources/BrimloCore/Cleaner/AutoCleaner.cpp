#include "BrimloCore/Cleaner/AutoCleaner.h"

#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/Fmt.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <cstdlib>

namespace Brimlo::AutoCleaner {

namespace {

constexpr const char* kIsOff =
    "Auto-clean is off. Turn it on in Settings (or `config auto-clean-enabled true`), or pass "
    "--force for a one-off run.";

bool mayTake(const Suggestion& suggestion, const AppConfig& config) {
    const bool isOwnRule = suggestion.id.starts_with(UserRules::kIDPrefix);
    return suggestion.risk != Risk::review && suggestion.runningApps.empty() &&
           (config.autoCleanIncludesCustomRules || !isOwnRule);
}

}  // namespace

AutoCleanOutcome run(const AppConfig& config, Cleaner& cleaner, bool dryRun, bool force) {
    AutoCleanOutcome outcome;
    if (!config.autoCleanEnabled && !force) {
        outcome.skippedReason = kIsOff;
        return outcome;
    }
    // Before the look at the free space: what was promised to go after some days goes anyway.
    outcome.purgedFromTrash = cleaner.purgeOwnTrash(config.trashRetentionDays, dryRun);
    if (!force) {
        outcome.skippedReason = reasonToWait(config, VolumeInfo::snapshot("/"));
    }
    if (!outcome.skippedReason) {
        const SuggestionOptions everything{.staleDays = config.staleDays};
        const CleanPlan plan{selection(config, SuggestionEngine::generate(everything))};
        outcome.planned = plan.items();
        outcome.report = cleaner.execute(plan, DisposalMode::trash, dryRun);
    }
    return outcome;
}

std::optional<std::string> reasonToWait(
    const AppConfig& config, const std::optional<VolumeInfo::Snapshot>& volume) {
    if (!volume) {
        return std::nullopt;
    }
    constexpr std::int64_t kBytesPerGB = 1'000'000'000;
    std::int64_t limit = 0;
    if (__builtin_mul_overflow(config.freeSpaceThresholdGB, kBytesPerGB, &limit)) {
        // In release builds too: with a threshold that wraps around, nobody would notice that the
        // clean never runs, or always does.
        std::abort();
    }
    if (volume->available <= limit) {
        return std::nullopt;
    }
    return "Free space " + Fmt::bytes(volume->available) + " is above the " +
           std::to_string(config.freeSpaceThresholdGB) + " GB threshold.";
}

std::vector<CleanItem> selection(
    const AppConfig& config, const std::vector<Suggestion>& suggestions) {
    std::vector<CleanItem> items;
    for (const Suggestion& suggestion : suggestions) {
        if (!mayTake(suggestion, config)) {
            continue;
        }
        for (const SuggestionItem& item : suggestion.items) {
            if (suggestion.preselectedPaths.contains(item.path)) {
                items.push_back({item.path, item.size, suggestion.id, suggestion.risk});
            }
        }
    }
    return items;
}

}  // namespace Brimlo::AutoCleaner
