#pragma once

#include "BrimloCore/Docker/DockerCategory.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Brimlo {

/// An object that Docker could remove. Identified by `pseudoPath`.
struct DockerObject {
    enum class Kind : std::uint8_t { image, container, volume, buildCache };

    Kind kind = Kind::image;
    std::string dockerID;  ///< Docker's identifier for removal.
    std::string title;
    std::string detail;
    std::int64_t size = 0;  ///< Bytes, rounded as Docker prints them.
    DockerCategory category = DockerCategory::unusedImages;

    bool operator==(const DockerObject&) const = default;

    /// Its pseudo path: "docker:image:sha256:ab12".
    [[nodiscard]] std::string pseudoPath() const;

    /// A pseudo path in words: "Docker image ab12", with as much of a hash as Docker shows.
    [[nodiscard]] static std::string words(std::string_view pseudoPath);
};

/// The kind's word in JSON.
[[nodiscard]] std::string_view rawValue(DockerObject::Kind kind);

}  // namespace Brimlo
