#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The folders of the XDG Base Directory Specification 0.8, and those of "user-dirs.dirs".
namespace Brimlo::Platform {

/// `$XDG_DATA_HOME`, by default "~/.local/share". A relative value counts as unset.
[[nodiscard]] std::string dataHome();

/// `$XDG_CONFIG_HOME`, by default "~/.config", likewise.
[[nodiscard]] std::string configHome();

/// `dataHome` and the folders of `$XDG_DATA_DIRS`, most important first.
[[nodiscard]] std::vector<std::string> dataFolders();

/// The absolute folders in a list separated by colons.
[[nodiscard]] std::vector<std::string> splitFolders(std::string_view list);

/// The user's folders for desktop, documents, videos and so on, from "user-dirs.dirs": absolute,
/// normalized. The home folder itself is never one: there it switches a folder off.
[[nodiscard]] std::vector<std::string> userFolders();

/// The folders named in the text of "user-dirs.dirs". Malformed lines are ignored.
[[nodiscard]] std::vector<std::string> parseUserFolders(
    std::string_view text, const std::string& home);

}  // namespace Brimlo::Platform
