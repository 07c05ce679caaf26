#include "BrimloCore/Platform/ToolPaths.h"

namespace Brimlo::Platform {

std::vector<std::string> toolPaths(std::string_view /*name*/) {
    return {};
}

}  // namespace Brimlo::Platform
