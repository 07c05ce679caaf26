#pragma once

#include <cstdint>
#include <string>

/// Numbers in words for the user.
namespace Brimlo::Fmt {

/// A count of bytes in decimal units: no fraction up to kilobytes, one digit for megabytes, two
/// above, without trailing zeros. For example "0 bytes", "812 KB", "1.5 MB", "12.34 GB". On macOS
/// formatted by the system, in the user's language.
[[nodiscard]] std::string bytes(std::int64_t count);

/// A span of days: "today", "12d", "3mo" or "1.5y".
[[nodiscard]] std::string days(std::int64_t count);

}  // namespace Brimlo::Fmt
