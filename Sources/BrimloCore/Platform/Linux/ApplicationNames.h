#pragma once

#include "BrimloCore/Platform/Linux/DesktopEntry.h"

#include <string>
#include <vector>

namespace Brimlo::Platform {

/// The names of the applications that this user's processes belong to; sorted, unique.
///
/// `proc` is the process file system, "/proc". An application is named as in `entries`. One without
/// an entry has the name of its binary or script, and its maker's name where that differs; a
/// Flatpak or Snap also the last part of its id.
[[nodiscard]] std::vector<std::string> applicationNames(
    const std::string& proc, const std::vector<DesktopEntry>& entries);

}  // namespace Brimlo::Platform
