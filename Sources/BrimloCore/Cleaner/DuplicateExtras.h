#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// What came of letting equal files share their bytes.
struct CloneReport {
    std::int64_t sharedBytes = 0;
    std::vector<std::string> failures;  ///< "path: reason".

    bool operator==(const CloneReport&) const = default;

    /// It in a sentence.
    [[nodiscard]] std::string sentence() const;
};

/// What can be done about the extras of groups: the files of each but the one to keep.
namespace DuplicateExtras {

/// The plan to dispose of the extras. A file that stays in a group is never an item, and where the
/// one to keep is gone by now, the next one stays.
[[nodiscard]] CleanPlan plan(const std::vector<DuplicateGroup>& groups);

/// Puts a clone of the file to keep in the place of each extra, with the times and the mode of the
/// latter, until the control is cancelled; it may be null. `progress` is told each extra before it.
///
/// The groups are not trusted. The clone is made first, beside the extra and under its name with
/// ".brimlo-clone" behind, and all its bytes are compared with those of the extra, which nobody can
/// write to meanwhile (`Platform::holdWriters`). Then the two are exchanged. Only when what came
/// out is the very file that was compared, unchanged, does it go; else it is put back. So at every
/// moment the whole old or the whole new file is in its place.
///
/// An extra with further names is refused, since those would keep their own bytes. One that shares
/// all its bytes already is passed over. Blocks; reads all files.
[[nodiscard]] CloneReport clone(
    const std::vector<DuplicateGroup>& groups,
    const ScanControl* control = nullptr,
    const DuplicateFinder::Progress& progress = {});

}  // namespace DuplicateExtras

}  // namespace Brimlo
