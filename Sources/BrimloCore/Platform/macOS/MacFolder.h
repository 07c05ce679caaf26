#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <expected>
#include <string_view>

namespace Brimlo::Platform {

/// `openFolder` for paths as the system spells them, with "/private" left away or not.
[[nodiscard]] std::expected<Descriptor, Error> openMacFolder(std::string_view path);

/// Makes the last changes in an open folder last through a power cut.
void syncFolder(int folder);

}  // namespace Brimlo::Platform
