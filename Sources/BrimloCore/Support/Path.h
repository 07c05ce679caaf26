#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <optional>
#include <string>
#include <string_view>

/// Absolute paths. Only `resolved` and `typed` read the disk; the others work on the text.
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

/// An absolute path with its symlinks resolved as far as they exist, in standardized form. Missing
/// parts and symlink loops stay as spelled.
[[nodiscard]] std::string resolved(std::string_view path);

/// The path that the system means by a text typed by a person: absolute, a leading "~" expanded,
/// free of ".", ".." and trailing slashes. Every path from a person (an argument, a field, a drop)
/// goes through here; the text alone may mean another file.
///
/// Symlinks stay as spelled, for the reader and for the safety gate, except where the system
/// follows them: "link/.." is the parent of the link's target, and "link/" is the target. The path
/// need not exist. Fails, with a sentence, for a text that is empty or holds a NUL, and for one
/// that leads through something that is not a folder.
[[nodiscard]] std::expected<std::string, Error> typed(std::string_view text);

}  // namespace Brimlo::Path
