#include "BrimloCore/Platform/OtherNames.h"

namespace Brimlo::Platform {

/// Only whole volumes are mounted here, each in one place.
struct OtherNames::Mounts {};

OtherNames::OtherNames() = default;

std::vector<std::string> OtherNames::of(std::string_view /*path*/) const {
    static_cast<void>(mounts_);
    return {};
}

}  // namespace Brimlo::Platform
