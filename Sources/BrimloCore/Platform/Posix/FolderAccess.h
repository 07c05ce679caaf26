#pragma once

#include <cstdint>
#include <string>

/// System-specific calls for walking, moving and deleting folders.
namespace Brimlo::Platform {

/// Opens the folder at the relative path `below` the one open at `folder` for reading, following no
/// symlink in any component; -1 on failure.
[[nodiscard]] int openFolderBelow(int folder, const std::string& below);

/// The id of the mount of an open file; 0 when unknown.
[[nodiscard]] std::uint64_t mountID(int descriptor);

/// Lets the owner list, enter and change a folder; false on failure. A symlink is not followed.
bool makeWritable(int parent, const std::string& name);

}  // namespace Brimlo::Platform
