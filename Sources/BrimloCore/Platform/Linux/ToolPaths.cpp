#include "BrimloCore/Platform/ToolPaths.h"

namespace Brimlo::Platform {

std::vector<std::string> toolPaths(std::string_view name) {
    return {"/usr/bin/" + std::string{name}};
}

}  // namespace Brimlo::Platform
