#pragma once

#include "BrimloCore/Models/Error.h"

#include <string>
#include <string_view>

namespace Brimlo::Platform {

/// An `NSError` as an error of ours: with the `errno` value that says the same, where there is one,
/// else with its own domain and code.
///
/// `description` is its localized description and stays as it is, unless there is none.
[[nodiscard]] Error cocoaError(std::string_view domain, long code, std::string description);

}  // namespace Brimlo::Platform
