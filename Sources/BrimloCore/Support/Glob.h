#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Wildcards, as the platform's own `glob` and `fnmatch` read them.
namespace Brimlo::Glob {

/// The existing paths that a pattern names, after its tilde is expanded.
///
/// With a star, a question mark or an opening bracket: what matches, in the order of the
/// directories; names beginning with a dot only where the pattern's component does. Without: the
/// path itself when it exists or is a dangling link.
[[nodiscard]] std::vector<std::string> expand(std::string_view pattern);

/// Whether a name matches a wildcard: a star and a question mark match "/" and a leading dot too,
/// backslash escapes, and case counts.
[[nodiscard]] bool matches(const std::string& name, const std::string& pattern);

}  // namespace Brimlo::Glob
