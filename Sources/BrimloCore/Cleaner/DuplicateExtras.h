#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CopyChoice.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// The result of replacing equal files by clones.
struct CloneReport {
    std::int64_t sharedBytes = 0;
    std::vector<std::string> failures;  ///< "path: reason".

    bool operator==(const CloneReport&) const = default;

    /// The result in a sentence.
    [[nodiscard]] std::string sentence() const;
};

/// Disposes of the extras of duplicate groups: all copies but those that a choice keeps.
namespace DuplicateExtras {

/// The plan to dispose of the extras, measured. A copy that stays in one of the groups is never an
/// item. Where all that should stay are gone by now, the next copy is kept, so that no plan takes
/// the last one.
[[nodiscard]] CleanPlan plan(
    const std::vector<DuplicateGroup>& groups, const CopyChoice& choice = CopyChoice{});

/// Why no copy of a group can become a clone of another, as a sentence; nullopt when the file
/// systems of two copies may have clones.
[[nodiscard]] std::optional<std::string> cloneRefusal(const DuplicateGroup& group);

/// Replaces each extra with a clone of the first copy that stays, with the extra's times and mode,
/// until the control is cancelled; it may be null. `progress` is called with each extra first.
///
/// The groups are not trusted. The clone is made first, beside the extra and under its name plus
/// ".brimlo-clone", and all its bytes are compared with those of the extra while nobody can write
/// to it (`Platform::holdWriters`). Then the two are exchanged. The old file is deleted only when
/// it is the very file that was compared, unchanged; otherwise it is put back. So at every moment
/// either the whole old or the whole new file is in place.
///
/// An extra with other hard links is refused, since those would keep their own bytes. One that
/// shares all its bytes already is skipped. Blocks; reads all files.
[[nodiscard]] CloneReport clone(
    const std::vector<DuplicateGroup>& groups,
    const CopyChoice& choice = CopyChoice{},
    const ScanControl* control = nullptr,
    const std::function<void(const std::string& path)>& progress = {});

}  // namespace DuplicateExtras

}  // namespace Brimlo
