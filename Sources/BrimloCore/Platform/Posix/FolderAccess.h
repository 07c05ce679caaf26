#pragma once

#include <cstdint>
#include <string>

/// What each system has its own way for when folders are walked, moved and deleted.
namespace Brimlo::Platform {

/// Opens the folder at the relative path `below` the one open at `folder` for reading, following no
/// link in any component; -1 when that can't be done.
[[nodiscard]] int openFolderBelow(int folder, const std::string& below);

/// The number of the mount that an open file lies on; 0 when the system does not tell.
[[nodiscard]] std::uint64_t mountID(int descriptor);

/// Lets the owner list, enter and change a folder; false when that can't be had. A link is not
/// followed.
bool makeWritable(int parent, const std::string& name);

}  // namespace Brimlo::Platform
