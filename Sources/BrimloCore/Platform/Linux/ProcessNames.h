#pragma once

#include "BrimloCore/Platform/Linux/DesktopEntry.h"

#include <string>
#include <vector>

namespace Brimlo::Platform {

/// The names of the applications to which the processes of this user belong; sorted, unique.
///
/// `proc` is the folder in which the kernel shows processes, "/proc". An application is called as
/// one of `entries` calls it. One without an entry goes by the name of its binary or script, and
/// by the one its makers use where that differs; a Flatpak or Snap by the last part of its id, too.
[[nodiscard]] std::vector<std::string> applicationNames(
    const std::string& proc, const std::vector<DesktopEntry>& entries);

}  // namespace Brimlo::Platform
