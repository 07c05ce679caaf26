#include "BrimloCore/Support/Dates.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <limits>

namespace Brimlo::Dates {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::sys_seconds;

constexpr std::int64_t kSecondsADay = 86'400;

/// Reads numbers and separators from the front of a text, and remembers whether all matched.
class Scanner {
public:
    explicit Scanner(std::string_view text)
        : rest_(text) {}

    unsigned number(std::size_t digits) {
        unsigned value = 0;
        const char* end = rest_.data() + digits;
        if (rest_.size() < digits || rest_.front() == '-' ||
            std::from_chars(rest_.data(), end, value).ptr != end) {
            failed_ = true;
            return 0;
        }
        rest_.remove_prefix(digits);
        return value;
    }

    bool accept(char c) {
        if (!rest_.starts_with(c)) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    void expect(char c) { failed_ |= !accept(c); }

    [[nodiscard]] bool succeeded() const { return !failed_ && rest_.empty(); }

private:
    std::string_view rest_;
    bool failed_ = false;
};

}  // namespace

std::string format(sys_seconds date) {
    const auto day = std::chrono::floor<days>(date);
    const std::chrono::year_month_day ymd{day};
    const std::chrono::hh_mm_ss time{date - day};
    std::array<char, 40> text{};
    const int length = std::snprintf(
        text.data(),
        text.size(),
        "%04d-%02u-%02uT%02d:%02d:%02dZ",
        static_cast<int>(ymd.year()),
        static_cast<unsigned>(ymd.month()),
        static_cast<unsigned>(ymd.day()),
        static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::optional<sys_seconds> parse(std::string_view text) {
    Scanner scanner{text};
    const std::chrono::year year{static_cast<int>(scanner.number(4))};
    scanner.expect('-');
    const std::chrono::month month{scanner.number(2)};
    scanner.expect('-');
    const std::chrono::day day{scanner.number(2)};
    scanner.expect('T');
    const unsigned hour = scanner.number(2);
    scanner.expect(':');
    const unsigned minute = scanner.number(2);
    scanner.expect(':');
    const unsigned second = scanner.number(2);

    seconds offset{0};
    if (!scanner.accept('Z')) {
        const bool isWest = scanner.accept('-');
        if (!isWest) {
            scanner.expect('+');
        }
        offset = hours{scanner.number(2)};
        scanner.accept(':');
        offset += minutes{scanner.number(2)};
        offset = isWest ? -offset : offset;
    }
    const std::chrono::year_month_day ymd{year, month, day};
    if (!scanner.succeeded() || !ymd.ok() || hour > 23 || minute > 59 || second > 60) {
        return std::nullopt;
    }
    const sys_seconds date =
        std::chrono::sys_days{ymd} + hours{hour} + minutes{minute} + seconds{second} - offset;
    // An offset can lead to a year without four digits, whose text could not be parsed again.
    constexpr std::chrono::sys_days kFirst = std::chrono::year{0} / 1 / 1;
    constexpr std::chrono::sys_days kEnd = std::chrono::year{10'000} / 1 / 1;
    return date >= kFirst && date < kEnd ? std::optional{date} : std::nullopt;
}

std::optional<std::chrono::sys_seconds> endOfDay(std::string_view text) {
    const auto end = parse(std::string{text} + "T23:59:59Z");
    if (!end) {
        return std::nullopt;
    }
    const std::time_t inUniversalTime = end->time_since_epoch().count();
    std::tm day{};
    gmtime_r(&inUniversalTime, &day);
    day.tm_isdst = -1;  // The system knows.
    return std::chrono::sys_seconds{std::chrono::seconds{std::mktime(&day)}};
}

std::time_t daysBefore(std::time_t now, std::int64_t count) {
    std::int64_t span = 0;
    std::int64_t moment = 0;
    if (__builtin_mul_overflow(count, kSecondsADay, &span) ||
        __builtin_sub_overflow(static_cast<std::int64_t>(now), span, &moment)) {
        using Limits = std::numeric_limits<std::time_t>;
        return count > 0 ? Limits::min() : Limits::max();
    }
    return moment;
}

std::int64_t daysSince(std::time_t date, std::time_t now) {
    std::int64_t span = 0;
    if (__builtin_sub_overflow(
            static_cast<std::int64_t>(now), static_cast<std::int64_t>(date), &span)) {
        span = date < now ? std::numeric_limits<std::int64_t>::max() : 0;
    }
    return std::max<std::int64_t>(0, span / kSecondsADay);
}

}  // namespace Brimlo::Dates
