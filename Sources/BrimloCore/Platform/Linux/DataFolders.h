#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The folders of the XDG Base Directory Specification 0.8.
namespace Brimlo::Platform {

/// `$XDG_DATA_HOME`, by default "~/.local/share". A relative value counts as unset.
[[nodiscard]] std::string dataHome();

/// `$XDG_CONFIG_HOME`, by default "~/.config", likewise.
[[nodiscard]] std::string configHome();

/// An absolute path without ".", "..", empty components and trailing slash; symlinks are not
/// followed.
[[nodiscard]] std::string normalFolder(const std::string& path);

/// `dataHome` and the folders of `$XDG_DATA_DIRS`, most important first.
[[nodiscard]] std::vector<std::string> dataFolders();

/// The absolute folders in a list separated by colons.
[[nodiscard]] std::vector<std::string> splitFolders(std::string_view list);

}  // namespace Brimlo::Platform
