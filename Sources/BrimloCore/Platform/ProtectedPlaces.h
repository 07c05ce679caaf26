#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// What a home folder of this system holds that must not go, beside what every system has.
///
/// "~" stands for the home folder. The order of rows means nothing.
struct ProtectedPlaces {
    using Rows = std::span<const std::string_view>;

    Rows whole;     ///< May not go itself; what lies in it may.
    Rows never;     ///< May not go, nor anything in it.
    Rows profiles;  ///< Likewise, but for the caches in it.
    /// What may go, although it lies in a place of `never`. A star stands for one component.
    Rows carveOuts;

    /// Absolute paths, `whole` as well: the folders that the user's settings name, such as that of
    /// the user's videos in the language of the desktop. Read anew at each call.
    std::vector<std::string> named;

    /// A folder that programs take for another one of the home, where all other rows hold, too. A
    /// star in `folder` stands for one component.
    struct Stead {
        std::string folder;
        std::string standsFor;
    };
    std::vector<Stead> steads;
};

[[nodiscard]] ProtectedPlaces protectedPlaces();

}  // namespace Brimlo::Platform
