#pragma once

#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/VolumeInfo.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// The result of an unattended clean, or of its dry run.
struct AutoCleanOutcome {
    std::optional<std::string> skippedReason;  ///< Why nothing was cleaned; a sentence.
    std::vector<CleanItem> planned;            ///< The items of its plan; empty when skipped.
    std::optional<CleanReport> report;         ///< Absent when skipped.
    TrashReport purge;       ///< Own items that were in the Trash for longer than the retention.
    bool isBlocked = false;  ///< Whether it was skipped because something is wrong.

    bool operator==(const AutoCleanOutcome&) const = default;

    /// The result in a sentence or two.
    [[nodiscard]] std::string sentence(bool dryRun) const;
    /// What a person who was not there needs to know: how much went, and how it comes back. Nullopt
    /// when nothing can be undone.
    [[nodiscard]] std::optional<std::string> notice() const;
};

/// The unattended clean. It cleans less than a reviewed one: only items that are preselected, rated
/// safe or rebuild, and not owned by a running app, and items of the user's own rules only if the
/// settings allow it. Its items pass the safety gate and can be undone.
namespace AutoCleaner {

/// Purges the Trash of what is older than the retention, then cleans if free space is short.
///
/// Without a writable journal it does neither, because no person would see the unrecorded items.
/// `force` runs it even when it is off in the settings or there is enough free space, with the same
/// selection. A dry run removes nothing. `isStopped` ends its clean (`CleanOptions`). Blocks.
[[nodiscard]] AutoCleanOutcome run(
    const AppConfig& config,
    Cleaner& cleaner,
    bool dryRun,
    bool force,
    const std::function<bool()>& isStopped = {});

/// Why the clean can wait with this much free space, or with an unknown amount; nullopt at or below
/// the threshold.
[[nodiscard]] std::optional<std::string> reasonToWait(
    const AppConfig& config, const std::optional<VolumeInfo::Snapshot>& volume);

/// The items of the suggestions that an unattended clean may dispose of.
[[nodiscard]] CleanPlan selection(
    const AppConfig& config, const std::vector<Suggestion>& suggestions);

}  // namespace AutoCleaner

}  // namespace Brimlo
