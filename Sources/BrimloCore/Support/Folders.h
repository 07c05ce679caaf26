#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <string>
#include <vector>

/// Making and listing folders.
namespace Brimlo::Folders {

/// The access rights of a new folder.
enum class Access { ownerOnly, asUmaskAllows };

/// Creates the folder with all missing parents. An existing one is left as it is.
[[nodiscard]] std::expected<void, Error> create(const std::string& path, Access access);

/// The names in a folder, hidden ones included, in directory order, without "." and "..".
[[nodiscard]] std::expected<std::vector<std::string>, Error> names(const std::string& path);

}  // namespace Brimlo::Folders
