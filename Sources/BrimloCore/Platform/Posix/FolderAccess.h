#pragma once

#include <cstdint>
#include <string>

/// What each system has its own way for when folders are moved and deleted.
namespace Brimlo::Platform {

/// The number of the mount that an open file lies on; 0 when the system does not tell.
[[nodiscard]] std::uint64_t mountID(int descriptor);

/// Lets the owner list, enter and change a folder; false when that can't be had. A link is not
/// followed.
bool makeWritable(int parent, const std::string& name);

}  // namespace Brimlo::Platform
