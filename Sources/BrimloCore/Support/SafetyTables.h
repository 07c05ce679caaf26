#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// What the gate says of a path by its text, with the home folder and the user's settings of one
/// moment. A part of `Safety`, which knows where links and mounts lead; nobody else asks it.
///
/// Texts are compared decomposed and in lower case, so that equality and prefixes are those of
/// Unicode text on a disk that doesn't tell letter case apart.
class SafetyTables {
public:
    SafetyTables();

    /// The reason not to touch what lies at `path`, in canonical form: the rows at or above it.
    [[nodiscard]] std::optional<std::string> check(std::string_view path) const;

    /// The same, and the reason not to move `path` with all that it holds: the rows below it.
    [[nodiscard]] std::optional<std::string> checkAsAWhole(std::string_view path) const;

    /// `path` as the rows are written: in lower case, "~" for the home folder by any of its names.
    [[nodiscard]] std::string place(std::string_view path) const;

    /// The home folder as it is spelled, and then with its links resolved where that differs.
    [[nodiscard]] const std::vector<std::string>& homes() const { return homes_; }

    /// A place of the tables that is there now.
    struct Landmark {
        std::string path;                 ///< Absolute, in the home as it is spelled.
        std::string real;                 ///< With its links resolved.
        bool isBehindALink = false;       ///< A link within the home leads to it.
        Platform::FileIdentity identity;  ///< That of what its links lead to.
        std::string_view reason;          ///< Why a folder that holds it may not go.
    };

    /// All that are there. Costs a system call for each place whose folder is there.
    [[nodiscard]] std::vector<Landmark> landmarks() const;

private:
    using Texts = std::vector<std::string>;

    [[nodiscard]] Texts namesInHome(const std::string& place) const;
    [[nodiscard]] bool holdsAnotherHomesRows(
        const std::string& path, const std::string& place) const;

    Texts homes_;
    Texts named_;         ///< The folders that the user's settings name, absolute.
    Texts loweredHomes_;  ///< But for a home that is the whole disk.
    Texts loweredNamed_;  ///< As `place` writes them.
    Texts ownData_;       ///< Likewise, with the links of its folder resolved, too.
    Texts userOwned_;     ///< In the letters as they stand, decomposed.

    /// A folder with a star for any one component, and the folder of the home that it stands for.
    struct Stead {
        std::string folder;
        std::string standsFor;
    };
    std::vector<Stead> steads_;
};

}  // namespace Brimlo
