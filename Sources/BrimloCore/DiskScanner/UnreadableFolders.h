#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// A part of the disk that a walk could not read.
struct UnreadableArea {
    std::string area;        ///< Also its id: for example "~/Library/Safari" or "/private".
    std::int64_t count = 0;  ///< Skipped paths in it.
    std::string example;     ///< The first of them, as a full path.
    std::string reason;      ///< A sentence for the user.

    bool operator==(const UnreadableArea&) const = default;
};

/// Summarizes thousands of skipped paths.
namespace UnreadableFolders {

/// The first few paths as a list in words.
[[nodiscard]] std::string firstFew(const std::vector<std::string>& paths);

/// The areas of the paths, most paths first and equal ones by name.
[[nodiscard]] std::vector<UnreadableArea> group(
    const std::vector<std::string>& paths, std::string_view home);

/// What a walk left out, in areas: unreadable paths as above, then those it had no descriptor for,
/// and other volumes.
[[nodiscard]] std::vector<UnreadableArea> group(const ScanControl& control, std::string_view home);

}  // namespace UnreadableFolders

}  // namespace Brimlo
