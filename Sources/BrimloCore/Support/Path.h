#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Paths as text: nothing here looks at the disk, except for the current folder.
namespace Brimlo::Path {

/// The absolute form without ".", "..", empty components and trailing slash.
///
/// A relative path is resolved against the current folder; ".." removes the component before it,
/// whatever that is on disk.
[[nodiscard]] std::string standardized(std::string_view path);

/// The last component; "/" for the root.
[[nodiscard]] std::string_view name(std::string_view path);

/// The path without its last component; "/" for the root and for its direct children. `path` is
/// standardized.
[[nodiscard]] std::string_view parent(std::string_view path);

/// `folder` + "/" + `name`, without doubling the slash of the root.
[[nodiscard]] std::string join(std::string_view folder, std::string_view name);

/// The text after `folder` and its slash when `path` lies below it, "" when they are equal.
[[nodiscard]] std::optional<std::string_view> below(std::string_view folder, std::string_view path);

/// Whether `path` can be passed to the system at all: not empty and without NUL.
[[nodiscard]] bool isUsable(std::string_view path);

}  // namespace Brimlo::Path
