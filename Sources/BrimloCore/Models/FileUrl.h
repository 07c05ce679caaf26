#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Percent-encoding of paths, byte by byte (RFC 3986, section 2.1).
namespace Brimlo::FileUrl {

/// "file://" followed by the encoded path.
[[nodiscard]] std::string fromPath(std::string_view path);

/// The path with every byte but unreserved characters and "/" written as "%XX".
[[nodiscard]] std::string encodePath(std::string_view path);

/// The bytes behind an encoded path; nullopt when a "%" is not followed by two hex digits.
[[nodiscard]] std::optional<std::string> decodePath(std::string_view encoded);

}  // namespace Brimlo::FileUrl
