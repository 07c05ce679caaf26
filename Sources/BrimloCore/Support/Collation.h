#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The order of names in the user's language.
namespace Brimlo::Collation {

/// One key for each name: comparing two keys byte by byte compares the names as the user's
/// language has it, letter case aside (Unicode Technical Standard 10).
[[nodiscard]] std::vector<std::string> keys(const std::vector<std::string_view>& names);

}  // namespace Brimlo::Collation
