#include "BrimloCore/Docker/DockerObject.h"

#include <array>
#include <cstddef>

namespace Brimlo {

std::string DockerObject::pseudoPath() const {
    if (kind == Kind::buildCache) {
        return "docker:buildcache:all";
    }
    return "docker:" + std::string{rawValue(kind)} + ":" + dockerID;
}

std::string_view rawValue(DockerObject::Kind kind) {
    constexpr std::array<std::string_view, 4> kWords{"image", "container", "volume", "buildCache"};
    return kWords.at(static_cast<std::size_t>(kind));
}

}  // namespace Brimlo
