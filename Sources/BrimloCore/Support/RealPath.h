#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <string>
#include <string_view>

/// Where paths lead on the disk.
namespace Brimlo::RealPath {

/// An absolute path with its links resolved as far as they exist, in standardized form. What is
/// missing, and a link that turns in circles, stays as it is spelled.
[[nodiscard]] std::string of(std::string_view path);

/// The path that the system means by a text that a person typed: absolute, a leading "~" expanded,
/// free of ".", ".." and trailing slashes. Whoever takes a path from a person (an argument, a
/// field, something dropped) starts here; the text alone may mean another file.
///
/// Links stay as they are spelled, for the eye and for the safety gate, except where the system
/// follows them: "link/.." is the folder above the link's target, and "link/" is the target. The
/// path itself need not exist. Fails, with a sentence, for a text that is empty or holds a NUL, and
/// for one that leads through what is no folder.
[[nodiscard]] std::expected<std::string, Error> typed(std::string_view text);

}  // namespace Brimlo::RealPath
