#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Wildcards, as the platform's `glob` and `fnmatch` read them.
namespace Brimlo::Glob {

/// A parsed path of a rule: validation judges exactly what expansion follows.
struct Pattern {
    struct Component {
        std::string text;  ///< With a wildcard as `fnmatch` reads it, else the name itself.
        bool isWild = false;

        bool operator==(const Component&) const = default;
    };

    /// The path before the first component with a wildcard, "/" for none; the whole path as written
    /// when there is no wildcard. The tilde is expanded.
    std::string fixed;
    std::vector<Component> rest;  ///< The components from the first with a wildcard on.
    bool foldersOnly = false;     ///< With a wildcard: a slash at the end asks for folders.

    /// Whether a component is "..".
    bool goesUp = false;
};

/// The pattern has wildcards if it holds a star, a question mark or an opening bracket outside the
/// home folder's own name, which may be written out; then a backslash escapes the next character.
[[nodiscard]] Pattern parse(std::string_view path);

/// The existing paths that a pattern names.
///
/// With wildcards: what matches, in directory order; names beginning with a dot only where the
/// pattern's component does. Otherwise: the path itself when it exists or is a dangling symlink. A
/// pattern that goes up or is not absolute names nothing.
[[nodiscard]] std::vector<std::string> expand(const Pattern& pattern);
[[nodiscard]] std::vector<std::string> expand(std::string_view path);

/// Whether a name matches a wildcard: a star and a question mark match "/" and a leading dot too,
/// backslash escapes, and case counts.
[[nodiscard]] bool matches(const std::string& name, const std::string& pattern);

}  // namespace Brimlo::Glob
