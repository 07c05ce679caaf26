#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The well-known places of the program and its user.
namespace Brimlo::StoragePaths {

/// The user's home folder in standardized form, read anew at each call; "/" when there is none.
[[nodiscard]] std::string home();

/// Why no program may start in this home: root runs it, and the home is another user's, who could
/// then not change the files that it leaves there. A sentence, or nullopt when all is well.
[[nodiscard]] std::optional<std::string> reasonNotToStart();

/// "~" and a leading "~/" replaced by the home folder; any other text as it is.
[[nodiscard]] std::string expandTilde(std::string_view path);

/// The support folder, as it is written for every home.
inline constexpr std::string_view kSupport = "~/Library/Application Support/Brimlo";

/// The support folder, which holds all the program keeps. Creates it, for the owner alone, and
/// its parents if need be; a failure to do so is ignored.
[[nodiscard]] std::string support();

/// The user's journal, in the support folder.
[[nodiscard]] std::string journal();

}  // namespace Brimlo::StoragePaths
