#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <optional>
#include <string>
#include <string_view>

/// The last word on whether a path may ever be disposed of.
///
/// Holds no state and reads the home folder anew at each call. Nothing widens it: a refusal has no
/// override, no confirmation and no setting. Any thread.
namespace Brimlo::Safety {

/// The one form in which paths are compared: absolute, without ".", "..", empty components and
/// trailing slash. Links are not resolved, a leading "~" is not expanded.
[[nodiscard]] std::string canonical(std::string_view path);

/// The reason not to touch `path`, or nullopt when it may go.
///
/// The reason is a lower-case phrase without the path; callers write "path: reason". A path that
/// does not exist is judged by its text.
[[nodiscard]] std::optional<std::string> refusal(std::string_view path);

/// `refusal` for a path in canonical form whose `resolvedParent` is known. `item` is what was found
/// at the path, if anything: what is judged then is that very object, whatever stands there by now.
[[nodiscard]] std::optional<std::string> refusal(
    const std::string& canonicalPath,
    const std::string& resolved,
    const std::optional<Platform::FileIdentity>& item);

/// `path`, in canonical form, with the symbolic links of its parent resolved as far as they exist.
///
/// The last component stays: disposal acts on a link, not on what it points to.
[[nodiscard]] std::string resolvedParent(const std::string& path);

/// What the tables say of a text in canonical form, without a look at the disk.
[[nodiscard]] std::optional<std::string> check(std::string_view path);

}  // namespace Brimlo::Safety
