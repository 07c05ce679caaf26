#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <string>
#include <string_view>

/// Where paths lead on the disk.
namespace Brimlo::RealPath {

/// An absolute path with its symlinks resolved as far as they exist, in standardized form. Missing
/// parts and symlink loops stay as spelled.
[[nodiscard]] std::string of(std::string_view path);

/// The path that the system means by a text typed by a person: absolute, a leading "~" expanded,
/// free of ".", ".." and trailing slashes. Every path from a person (an argument, a field, a drop)
/// goes through here; the text alone may mean another file.
///
/// Symlinks stay as spelled, for the reader and for the safety gate, except where the system
/// follows them: "link/.." is the parent of the link's target, and "link/" is the target. The path
/// need not exist. Fails, with a sentence, for a text that is empty or holds a NUL, and for one
/// that leads through something that is not a folder.
[[nodiscard]] std::expected<std::string, Error> typed(std::string_view text);

}  // namespace Brimlo::RealPath
