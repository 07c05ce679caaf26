#pragma once

#include "BrimloCore/ScanRecords/ScanRecord.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// What changed in a folder between two scans of it.
///
/// Each change is told once, in the smallest listed folder that holds it. Of a folder that a record
/// does not list only the floor is known, so a change has a least and a most. A folder that may not
/// have changed is not told, unless it moved.
struct Growth {
    enum class Kind {
        changed,   ///< It grew or shrank.
        appeared,  ///< It was not there, or below the floor.
        vanished,  ///< It is gone, or below the floor.
        moved,     ///< It lies elsewhere, and may have changed, too.
    };

    /// A folder with all below it.
    struct Total {
        std::int64_t size = 0;
        std::int64_t fileCount = 0;

        bool operator==(const Total&) const = default;
    };

    struct Folder {
        Kind kind = Kind::changed;
        std::string path;                       ///< Where it was, if it vanished.
        std::optional<std::string> formerPath;  ///< Of a moved one.
        std::optional<Total> before;            ///< Absent where `appeared`.
        std::optional<Total> now;               ///< Absent where `vanished`.
        /// The change in bytes outside the folders in it that are listed in both records. In a
        /// folder that appeared or vanished, of all below it but what moved in or out.
        std::int64_t least = 0;
        std::int64_t most = 0;

        /// The part of the change that is sure; 0 where it may be none.
        [[nodiscard]] std::int64_t sure() const {
            return least > 0 ? least : std::min<std::int64_t>(most, 0);
        }

        bool operator==(const Folder&) const = default;
    };

    /// The word for a kind: "changed", "appeared", "vanished" or "moved".
    [[nodiscard]] static std::string_view rawValue(Kind kind);

    std::chrono::sys_seconds since;
    Total before;
    Total now;
    std::vector<Folder> folders;  ///< The largest growth first, by `least`.

    /// The folder that surely grew most; null when none surely grew.
    [[nodiscard]] const Folder* grewMost() const {
        return folders.empty() || folders.front().least <= 0 ? nullptr : &folders.front();
    }

    /// The changes from one record to a later one of the same root.
    ///
    /// Folders are the same by their path, else by device and inode together with one sign more
    /// (the name, the sums or a folder in it), since file systems give the inode of a deleted
    /// folder to the next.
    [[nodiscard]] static Growth between(const ScanRecord& before, const ScanRecord& now);
};

}  // namespace Brimlo
