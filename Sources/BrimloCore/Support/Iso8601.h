#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

/// Dates with whole seconds as text (ISO 8601, the profile of RFC 3339 without fractions).
namespace Brimlo::Iso8601 {

/// In universal time, for example "2026-03-01T09:30:00Z".
[[nodiscard]] std::string format(std::chrono::sys_seconds date);

/// The date in a text that ends in "Z" or in an offset such as "+02:00"; nullopt for other texts.
[[nodiscard]] std::optional<std::chrono::sys_seconds> parse(std::string_view text);

}  // namespace Brimlo::Iso8601
