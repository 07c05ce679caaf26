#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Wildcards, as the platform's own `glob` and `fnmatch` read them.
namespace Brimlo::Glob {

/// A path of a rule, read once: what validation judges is what expansion follows.
struct Pattern {
    struct Component {
        std::string text;  ///< With a wildcard as `fnmatch` reads it, else the name itself.
        bool isWild = false;

        bool operator==(const Component&) const = default;
    };

    /// What lies before the first component with a wildcard, "/" for nothing; the whole path as it
    /// is written when there is no wildcard. The tilde is expanded.
    std::string fixed;
    std::vector<Component> rest;  ///< The components from the first with a wildcard on.
    bool foldersOnly = false;     ///< With a wildcard: a slash at the end asks for folders.

    /// Whether a component is "..".
    bool goesUp = false;
};

/// The path is wild if a star, a question mark or an opening bracket is in it, outside the home
/// folder's own name, which may be written out; then a backslash makes the next character an
/// ordinary one.
[[nodiscard]] Pattern parse(std::string_view path);

/// The existing paths that a pattern names.
///
/// Wild: what matches, in the order of the directories; names beginning with a dot only where the
/// pattern's component does. Else: the path itself when it exists or is a dangling link. Nothing is
/// named by a pattern that goes up or is not absolute.
[[nodiscard]] std::vector<std::string> expand(const Pattern& pattern);
[[nodiscard]] std::vector<std::string> expand(std::string_view path);

/// Whether a name matches a wildcard: a star and a question mark match "/" and a leading dot too,
/// backslash escapes, and case counts.
[[nodiscard]] bool matches(const std::string& name, const std::string& pattern);

}  // namespace Brimlo::Glob
