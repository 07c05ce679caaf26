#pragma once

#include <cstdint>
#include <ctime>

/// Spans of whole days of 86,400 seconds.
namespace Brimlo::Days {

/// The moment so many days before `now`; the remotest one when the span has no such moment.
[[nodiscard]] std::time_t before(std::time_t now, std::int64_t days);

/// The whole days from `date` to `now`, cut towards zero; 0 for a date that is still to come.
[[nodiscard]] std::int64_t since(std::time_t date, std::time_t now);

}  // namespace Brimlo::Days
