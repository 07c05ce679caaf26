#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// The user's folders for desktop, documents, videos and so on, from "user-dirs.dirs": absolute,
/// normalized. The home folder itself is never one: there it switches a folder off.
[[nodiscard]] std::vector<std::string> userFolders();

/// The folders named in a text. Malformed lines are ignored.
[[nodiscard]] std::vector<std::string> parseUserFolders(
    std::string_view text, const std::string& home);

}  // namespace Brimlo::Platform
