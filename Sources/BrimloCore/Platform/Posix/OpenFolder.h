#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <expected>
#include <string_view>

namespace Brimlo::Platform {

/// Opens a folder for calls relative to it, following no symlink in any component.
///
/// `path` is absolute and in canonical form. It is opened component by component, so its length is
/// not limited. Fails with ELOOP or ENOTDIR when a component is not a folder any more.
[[nodiscard]] std::expected<Descriptor, Error> openFolder(std::string_view path);

}  // namespace Brimlo::Platform
