#pragma once

#include <cstdint>
#include <ctime>

/// Spans of whole days of 86,400 seconds.
namespace Brimlo::Days {

/// `now` minus `days` days, clamped to time_t.
[[nodiscard]] std::time_t before(std::time_t now, std::int64_t days);

/// The whole days from `date` to `now`, rounded towards zero; 0 for a date in the future.
[[nodiscard]] std::int64_t since(std::time_t date, std::time_t now);

}  // namespace Brimlo::Days
