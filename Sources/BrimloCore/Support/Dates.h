#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

/// Dates as text (ISO 8601, the profile of RFC 3339 without fractions of a second), and spans of
/// whole days of 86,400 seconds.
namespace Brimlo::Dates {

/// In universal time, for example "2026-03-01T09:30:00Z".
[[nodiscard]] std::string format(std::chrono::sys_seconds date);

/// The date in a text that ends in "Z" or in an offset such as "+02:00"; nullopt for other texts.
[[nodiscard]] std::optional<std::chrono::sys_seconds> parse(std::string_view text);

/// The last second of a day in local time, from a text such as "2026-03-01"; nullopt for others.
[[nodiscard]] std::optional<std::chrono::sys_seconds> endOfDay(std::string_view text);

/// `now` minus `count` days, clamped to time_t.
[[nodiscard]] std::time_t daysBefore(std::time_t now, std::int64_t count);

/// The whole days from `date` to `now`, rounded towards zero; 0 for a date in the future.
[[nodiscard]] std::int64_t daysSince(std::time_t date, std::time_t now);

}  // namespace Brimlo::Dates
