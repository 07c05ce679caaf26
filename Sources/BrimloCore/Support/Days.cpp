#include "BrimloCore/Support/Days.h"

#include <algorithm>
#include <limits>

namespace Brimlo::Days {

namespace {

constexpr std::int64_t kSeconds = 86'400;

}  // namespace

std::time_t before(std::time_t now, std::int64_t days) {
    std::int64_t span = 0;
    std::int64_t moment = 0;
    if (__builtin_mul_overflow(days, kSeconds, &span) ||
        __builtin_sub_overflow(static_cast<std::int64_t>(now), span, &moment)) {
        using Limits = std::numeric_limits<std::time_t>;
        return days > 0 ? Limits::min() : Limits::max();
    }
    return moment;
}

std::int64_t since(std::time_t date, std::time_t now) {
    std::int64_t span = 0;
    if (__builtin_sub_overflow(
            static_cast<std::int64_t>(now), static_cast<std::int64_t>(date), &span)) {
        span = date < now ? std::numeric_limits<std::int64_t>::max() : 0;
    }
    return std::max<std::int64_t>(0, span / kSeconds);
}

}  // namespace Brimlo::Days
