#pragma once

#include <array>
#include <string_view>

namespace Brimlo {

/// How risky the removal of a finding is; the lower, the safer.
enum class Risk { safe = 0, rebuild = 1, review = 2 };

inline constexpr std::array kAllRisks{Risk::safe, Risk::rebuild, Risk::review};

/// The word that stands for the rating in JSON: "safe", "rebuild" or "review".
[[nodiscard]] std::string_view rawValue(Risk risk);

/// The short word for a badge or a table.
[[nodiscard]] std::string_view label(Risk risk);

/// One sentence that tells the user what the rating means.
[[nodiscard]] std::string_view explanation(Risk risk);

}  // namespace Brimlo
