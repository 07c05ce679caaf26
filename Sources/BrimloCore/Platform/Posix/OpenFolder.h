#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <expected>
#include <string_view>

namespace Brimlo::Platform {

/// Opens a folder for calls relative to it, following no link in any component.
///
/// `path` is absolute and in canonical form. Opening it component by component has no limit on
/// the length of the path. Fails with ELOOP or ENOTDIR when a component is no folder any more.
[[nodiscard]] std::expected<Descriptor, Error> openFolder(std::string_view path);

}  // namespace Brimlo::Platform
