#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace Brimlo {

/// What kind of leftover a Docker object is. Decides how it is offered.
enum class DockerCategory : std::uint8_t {
    danglingImages,
    unusedImages,
    stoppedContainers,
    orphanVolumes,
    buildCache,
};

inline constexpr std::array kAllDockerCategories{
    DockerCategory::danglingImages,
    DockerCategory::unusedImages,
    DockerCategory::stoppedContainers,
    DockerCategory::orphanVolumes,
    DockerCategory::buildCache,
};

/// The word that stands for the category in JSON; also its id.
[[nodiscard]] std::string_view rawValue(DockerCategory category);

/// The id under which its suggestion and the journal name it. No rule of the catalog has it.
[[nodiscard]] std::string_view ruleID(DockerCategory category);

/// The category's name for the screen.
[[nodiscard]] std::string_view title(DockerCategory category);

/// The rating of its objects.
[[nodiscard]] Risk risk(DockerCategory category);

/// What its objects are and how they can be restored, in whole sentences.
[[nodiscard]] std::string_view regenerates(DockerCategory category);

}  // namespace Brimlo
