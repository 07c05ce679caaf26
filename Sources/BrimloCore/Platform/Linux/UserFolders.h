#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// The folders of the desktop, of documents, videos and so on, as the file "user-dirs.dirs" names
/// them: absolute, normalized. The home folder itself is none of them; by its name a folder is
/// switched off there.
[[nodiscard]] std::vector<std::string> userFolders();

/// What a file with this text names. Lines that make no sense name nothing.
[[nodiscard]] std::vector<std::string> parseUserFolders(
    std::string_view text, const std::string& home);

}  // namespace Brimlo::Platform
