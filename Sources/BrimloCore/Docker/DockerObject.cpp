#include "BrimloCore/Docker/DockerObject.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Brimlo {
namespace {

constexpr std::string_view kBuildCache = "docker:buildcache:all";

}  // namespace

std::string DockerObject::pseudoPath() const {
    if (kind == Kind::buildCache) {
        return std::string{kBuildCache};
    }
    return "docker:" + std::string{rawValue(kind)} + ":" + dockerID;
}

std::string DockerObject::words(std::string_view pseudoPath) {
    constexpr std::size_t kHash = 64;
    constexpr std::size_t kShown = 12;
    if (pseudoPath == kBuildCache) {
        return "Docker build cache";
    }
    const std::string_view object = pseudoPath.substr(pseudoPath.find(':') + 1);
    const auto kind = object.substr(0, object.find(':'));
    std::string_view id = object.substr(std::min(kind.size() + 1, object.size()));
    if (id.starts_with("sha256:")) {
        id.remove_prefix(id.find(':') + 1);
    }
    if (id.size() == kHash && id.find_first_not_of("0123456789abcdef") == std::string_view::npos) {
        id = id.substr(0, kShown);
    }
    return "Docker " + std::string{kind} + " " + std::string{id};
}

std::string_view rawValue(DockerObject::Kind kind) {
    constexpr std::array<std::string_view, 4> kWords{"image", "container", "volume", "buildCache"};
    return kWords.at(static_cast<std::size_t>(kind));
}

}  // namespace Brimlo
