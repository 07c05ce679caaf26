#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// What must not be removed from a home folder on this system, besides what is protected on every
/// system. "~" is the home folder. The order of rows is irrelevant.
struct ProtectedPlaces {
    using Rows = std::span<const std::string_view>;

    Rows whole;     ///< May not be removed; its contents may.
    Rows never;     ///< May not be removed, nor anything in it.
    Rows profiles;  ///< Likewise, except for the caches in it.
    /// Exceptions within a place of `never`. A star stands for one component.
    Rows carveOuts;

    /// Absolute paths, protected like `whole`: the folders named in the user's settings, such as
    /// the localized videos folder. Read anew at each call.
    std::vector<std::string> named;

    /// A folder that programs use as another home folder, where all other rows apply, too. A star
    /// in `folder` stands for one component.
    struct Stead {
        std::string folder;
        std::string standsFor;
    };
    std::vector<Stead> steads;
};

[[nodiscard]] ProtectedPlaces protectedPlaces();

}  // namespace Brimlo::Platform
