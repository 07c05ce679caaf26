#include "BrimloCore/Platform/Fmt.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace Brimlo::Fmt {

std::string days(std::int64_t count) {
    if (count < 1) {
        return "today";
    }
    if (count < 30) {
        return std::to_string(count) + "d";
    }
    if (count < 365) {
        return std::to_string(count / 30) + "mo";
    }
    std::array<char, 32> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%.1fy", static_cast<double>(count) / 365.0);
    return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace Brimlo::Fmt
