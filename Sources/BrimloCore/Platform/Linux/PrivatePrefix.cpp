#include "BrimloCore/Platform/PrivatePrefix.h"

namespace Brimlo::Platform {

std::string withoutPrivatePrefix(std::string path) {
    return path;
}

}  // namespace Brimlo::Platform
