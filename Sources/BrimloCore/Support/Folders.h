#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <string>
#include <vector>

/// Making and listing folders.
namespace Brimlo::Folders {

/// Who may enter a folder that is made.
enum class Access { ownerOnly, asUmaskAllows };

/// Makes the folder with all missing folders above it. One that exists is left as it is.
[[nodiscard]] std::expected<void, Error> create(const std::string& path, Access access);

/// The names in a folder, hidden ones too, in the order of the directory, without "." and "..".
[[nodiscard]] std::expected<std::vector<std::string>, Error> names(const std::string& path);

}  // namespace Brimlo::Folders
