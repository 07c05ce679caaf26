#pragma once

#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/VolumeInfo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// What came of an unattended clean, or would come of it in a dry run.
struct AutoCleanOutcome {
    std::optional<std::string> skippedReason;  ///< Why nothing was cleaned; a sentence.
    std::vector<CleanItem> planned;            ///< What the clean took on; empty when skipped.
    std::optional<CleanReport> report;         ///< Absent when skipped.
    TrashReport purge;       ///< Of own items that had lain in the Trash too long.
    bool isBlocked = false;  ///< Whether it was skipped because something is wrong.

    bool operator==(const AutoCleanOutcome&) const = default;

    /// What came of it, in a sentence or two.
    [[nodiscard]] std::string sentence(bool dryRun) const;
};

/// The clean that nobody reviews, and that takes less than any other for that: only what is
/// preselected, rated safe or rebuild, and owned by no running app, and the user's own rules only
/// where the settings say so. What it takes passes the gate and can be undone like all else.
namespace AutoCleaner {

/// Purges the Trash of what is older than the retention, then cleans if free space is short.
///
/// Without a journal that can be written it does neither: nobody would see what went unrecorded.
/// `force` runs it where the settings have it off, and whatever the free space; it takes no more
/// for that. A dry run removes nothing. Blocks.
[[nodiscard]] AutoCleanOutcome run(
    const AppConfig& config, Cleaner& cleaner, bool dryRun, bool force);

/// Why so much free space, or one that is not known, lets the clean wait; nullopt at or below the
/// threshold.
[[nodiscard]] std::optional<std::string> reasonToWait(
    const AppConfig& config, const std::optional<VolumeInfo::Snapshot>& volume);

/// What of the suggestions an unattended clean may take.
[[nodiscard]] CleanPlan selection(
    const AppConfig& config, const std::vector<Suggestion>& suggestions);

}  // namespace AutoCleaner

}  // namespace Brimlo
