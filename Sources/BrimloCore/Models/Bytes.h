#pragma once

#include <cstdint>
#include <functional>
#include <limits>

/// Sums of sizes. Sizes from files and other programs may be anything, so sums saturate at the
/// largest or smallest number and never overflow.
namespace Brimlo::Bytes {

[[nodiscard]] constexpr std::int64_t sum(std::int64_t a, std::int64_t b) {
    using Limits = std::numeric_limits<std::int64_t>;
    std::int64_t result = 0;
    if (__builtin_add_overflow(a, b, &result)) {
        return a < 0 ? Limits::min() : Limits::max();
    }
    return result;
}

[[nodiscard]] constexpr std::int64_t product(std::int64_t size, std::int64_t count) {
    using Limits = std::numeric_limits<std::int64_t>;
    std::int64_t result = 0;
    if (__builtin_mul_overflow(size, count, &result)) {
        return (size < 0) == (count < 0) ? Limits::max() : Limits::min();
    }
    return result;
}

/// The sum of `size`, a field or a function, over all elements.
template <typename Range, typename Size>
[[nodiscard]] std::int64_t total(const Range& range, const Size& size) {
    std::int64_t result = 0;
    for (const auto& each : range) {
        result = sum(result, std::invoke(size, each));
    }
    return result;
}

}  // namespace Brimlo::Bytes
