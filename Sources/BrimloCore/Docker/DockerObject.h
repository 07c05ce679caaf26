#pragma once

#include "BrimloCore/Docker/DockerCategory.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Brimlo {

/// One thing that Docker could remove. Identified by `pseudoPath`.
struct DockerObject {
    enum class Kind : std::uint8_t { image, container, volume, buildCache };

    Kind kind = Kind::image;
    std::string dockerID;  ///< By which Docker is told to remove it.
    std::string title;
    std::string detail;
    std::int64_t size = 0;  ///< Bytes, rounded as Docker prints them.
    DockerCategory category = DockerCategory::unusedImages;

    bool operator==(const DockerObject&) const = default;

    /// What stands for it where files have a path: "docker:image:sha256:ab12".
    [[nodiscard]] std::string pseudoPath() const;

    /// What a pseudo path stands for, in words: "Docker image ab12", with no more of a hash than
    /// Docker shows.
    [[nodiscard]] static std::string words(std::string_view pseudoPath);
};

/// The word that stands for the kind in JSON.
[[nodiscard]] std::string_view rawValue(DockerObject::Kind kind);

}  // namespace Brimlo
