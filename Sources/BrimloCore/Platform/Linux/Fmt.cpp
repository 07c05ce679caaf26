#include "BrimloCore/Platform/Fmt.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace Brimlo::Fmt {

namespace {

struct Unit {
    std::string_view name;
    std::uint64_t bytes;
    int digits;
};

constexpr std::array<Unit, 6> kUnits{
    {
     {"KB", 1'000, 0},
     {"MB", 1'000'000, 1},
     {"GB", 1'000'000'000, 2},
     {"TB", 1'000'000'000'000, 2},
     {"PB", 1'000'000'000'000'000, 2},
     {"EB", 1'000'000'000'000'000'000, 2},
     }
};

/// `count` in units of the last digit shown, rounded to the nearest.
std::uint64_t scaled(std::uint64_t count, const Unit& unit) {
    std::uint64_t step = unit.bytes;
    for (int i = 0; i < unit.digits; ++i) {
        step /= 10;
    }
    return count / step + (count % step >= step - step / 2 ? 1 : 0);
}

std::string inUnit(std::uint64_t count, const Unit& unit) {
    std::string number = std::to_string(scaled(count, unit));
    if (unit.digits > 0) {
        const auto digits = static_cast<std::size_t>(unit.digits);
        number.insert(0, digits + 1 - std::min(digits + 1, number.size()), '0');
        number.insert(number.size() - digits, ".");
        number.erase(number.find_last_not_of('0') + 1);
        if (number.ends_with('.')) {
            number.pop_back();
        }
    }
    return number.append(" ").append(unit.name);
}

}  // namespace

std::string bytes(std::int64_t count) {
    const auto bits = static_cast<std::uint64_t>(count);
    const std::uint64_t magnitude = count < 0 ? 0 - bits : bits;
    std::string text;
    if (magnitude < kUnits.front().bytes) {
        text = std::to_string(magnitude) + (magnitude == 1 ? " byte" : " bytes");
    } else {
        // The first unit in which the number stays below 1,000 once it is rounded.
        const Unit* unit = kUnits.begin();
        while (unit + 1 != kUnits.end() &&
               scaled(magnitude, *unit) >= scaled(unit->bytes * 1000, *unit)) {
            ++unit;
        }
        text = inUnit(magnitude, *unit);
    }
    return count < 0 ? "-" + text : text;
}

}  // namespace Brimlo::Fmt
