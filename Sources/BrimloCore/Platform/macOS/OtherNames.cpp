#include "BrimloCore/Platform/OtherNames.h"

namespace Brimlo::Platform {

/// Only whole volumes are mounted here, each in one place.
std::vector<std::string> otherNames(std::string_view /*path*/) {
    return {};
}

}  // namespace Brimlo::Platform
