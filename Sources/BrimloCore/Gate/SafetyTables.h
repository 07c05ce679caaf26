#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// The gate's verdict on a path by its text alone, with the home folder and the user's settings at
/// one moment. Part of `Safety`, which resolves symlinks and mounts; used by nothing else.
///
/// Texts are compared decomposed and in lower case, like Unicode names on a case-insensitive
/// volume.
class SafetyTables {
public:
    SafetyTables();

    /// The reason not to touch `path`, in canonical form: the rows at or above it.
    [[nodiscard]] std::optional<std::string> check(std::string_view path) const;

    /// Also the reason not to move `path` with all its contents: the rows below it.
    [[nodiscard]] std::optional<std::string> checkAsAWhole(std::string_view path) const;

    /// `path` in the form of the rows: lower case, "~" for the home folder under any of its names.
    [[nodiscard]] std::string place(std::string_view path) const;

    /// The home folder as spelled, then with its symlinks resolved where that differs.
    [[nodiscard]] const std::vector<std::string>& homes() const { return homes_; }

    /// A protected place that exists now.
    struct Landmark {
        std::string path;                 ///< Absolute, in the home as it is spelled.
        std::string real;                 ///< With its symlinks resolved.
        bool isBehindALink = false;       ///< A symlink within the home leads to it.
        Platform::FileIdentity identity;  ///< Of the entry that its symlinks lead to.
        std::string_view reason;          ///< Why a folder that contains it may not go.
    };

    /// All that exist. Costs a system call for each place whose parent exists.
    [[nodiscard]] std::vector<Landmark> landmarks() const;

private:
    using Texts = std::vector<std::string>;

    [[nodiscard]] Texts namesInHome(const std::string& place) const;
    [[nodiscard]] bool holdsAnotherHomesRows(
        const std::string& path, const std::string& place) const;

    Texts homes_;
    Texts named_;         ///< Absolute folders named in the user's settings.
    Texts loweredHomes_;  ///< Without a home that is "/".
    Texts loweredNamed_;  ///< As `place` writes them.
    Texts ownData_;       ///< In the same form, also with the symlinks of its parent resolved.
    Texts userOwned_;     ///< Decomposed, in their letter case.

    /// A pattern for a program's own home, "*" for any one component, and the folder it stands for.
    struct Stead {
        std::string folder;
        std::string standsFor;
    };
    std::vector<Stead> steads_;
};

}  // namespace Brimlo
