#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/Platform/VolumeParts.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// One part of what is taken on a volume. No byte is in two of them, as far as the system tells.
struct AccountLine {
    enum class Kind {
        area,          ///< The files in a folder at the top of the volume or of the home.
        trash,         ///< What this user moved to the Trash.
        severalAreas,  ///< Files with names in several areas.
        deletedOpen,   ///< Files without a name that a process holds open.
        fileSystem,    ///< What the file system uses for itself.
        reserve,       ///< Free, but not for this user.
        rest,          ///< What no other line explains; below 0 when they explain too much.
    };

    Kind kind = Kind::area;
    std::string name;        ///< The path of an area, else words.
    std::int64_t bytes = 0;  ///< Allocated; a file with several names counts once.
    std::int64_t files = 0;  ///< Where files are counted.

    bool operator==(const AccountLine&) const = default;
};

/// Where the space of a volume is. Nothing is read but folders, status and figures.
struct VolumeAccount {
    /// The account of the volume that holds `path`; nullopt when it can't be opened or the walk was
    /// cancelled. Walks the whole volume, in several threads, and blocks until that is done.
    [[nodiscard]] static std::optional<VolumeAccount> of(
        const std::string& path, ScanControl& control);

    /// What is not available: used, or kept back.
    [[nodiscard]] std::int64_t taken() const { return use.total - use.available; }
    /// The bytes of the line `rest`.
    [[nodiscard]] std::int64_t unexplained() const { return lines.back().bytes; }

    /// "area" and so on.
    [[nodiscard]] static std::string_view rawValue(AccountLine::Kind kind);

    /// The lines for a screen: so many of the largest, one for all smaller ones, and `rest`.
    [[nodiscard]] std::vector<AccountLine> largest(std::size_t most) const;

    /// What the lines can't tell, in sentences: that no more files can be made, and where something
    /// could not be counted.
    [[nodiscard]] std::vector<std::string> remarks() const;

    std::vector<std::string> tops;  ///< Where the volume is mounted.
    bool isWhole = false;           ///< Whether all of it can be seen from there.
    Platform::VolumeUse use;        ///< When the walk had ended.
    /// The largest first, then `rest`. Their sum is `taken`, always.
    std::vector<AccountLine> lines;
    std::vector<UnreadableArea> unread;    ///< Folders that this user may not read.
    std::vector<std::string> snapshots;    ///< Not entered: what they hold alone is in `rest`.
    std::vector<std::string> mountPoints;  ///< Of other volumes, which may hide files below them.
    std::int64_t unaskedProcesses = 0;     ///< They may hold deleted files open.
};

}  // namespace Brimlo
