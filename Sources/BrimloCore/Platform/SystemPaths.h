#pragma once

#include <string>
#include <string_view>
#include <vector>

/// This system's name, and the paths that only it knows.
namespace Brimlo::Platform {

/// "linux" or "macos", as packs of rules for one system write it.
[[nodiscard]] std::string_view systemName();

/// This system's name as people write it: "Linux" or "macOS".
[[nodiscard]] std::string_view systemLabel();

/// Whether only another system has places like the pattern `path`, in tilde form.
[[nodiscard]] bool isOfAnotherSystem(std::string_view path);

/// The user's home folder as the system reports it; empty when unknown.
///
/// Read at each call, since tests and launchers change it.
[[nodiscard]] std::string homeFolder();

/// A standardized path without a leading "/private", where the system omits that: on macOS when the
/// rest leads to the same entry, as it does below /etc, /tmp and /var.
[[nodiscard]] std::string withoutPrivatePrefix(std::string path);

/// Where the system's packages install the command line tool of this name, absolute; empty where
/// the system ships no such tools.
[[nodiscard]] std::vector<std::string> systemToolPaths(std::string_view name);

}  // namespace Brimlo::Platform
