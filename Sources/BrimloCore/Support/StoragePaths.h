#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The well-known places of the program and its user.
namespace Brimlo::StoragePaths {

/// The user's home folder in standardized form, read anew at each call; "/" when there is none.
[[nodiscard]] std::string home();

/// Why the program must not start with this home: it runs as root and the home is another user's,
/// who could then not change the files left there. A sentence, or nullopt.
[[nodiscard]] std::optional<std::string> reasonNotToStart();

/// "~" and a leading "~/" replaced by the home folder; any other text as it is.
[[nodiscard]] std::string expandTilde(std::string_view path);

/// The support folder in tilde form.
inline constexpr std::string_view kSupport = "~/Library/Application Support/Brimlo";

/// The support folder, which holds all of the program's files. Creates it with its parents if
/// missing, accessible by the owner only; failures are ignored.
[[nodiscard]] std::string support();

/// The user's journal, in the support folder.
[[nodiscard]] std::string journal();

}  // namespace Brimlo::StoragePaths
